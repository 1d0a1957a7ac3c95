#pragma once

#include <symbolicexpr/table.h>

#include <string>

namespace TV {

class SymbolicExprParser {
  public:
    explicit SymbolicExprParser(SymbolicExprTable& table);
    unsigned long operator()(const std::string& text) const;
};

} // namespace TV
