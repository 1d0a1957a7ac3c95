#pragma once

#include <symbolicexpr/expr.h>

#include <string>

namespace TV {

class SymbolicExprPrinter {
  public:
    SymbolicExprPrinter(const SymbolicExprTable& table, int rank);
    std::string operator()(const SymbolicExpr& expression) const;
};

} // namespace TV
