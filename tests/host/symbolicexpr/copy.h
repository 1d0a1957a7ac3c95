#pragma once

#include <symbolicexpr/table.h>

namespace TV {

class SymbolicExprCopy {
  public:
    SymbolicExprCopy(const SymbolicExprTable& source, SymbolicExprTable& destination);
    unsigned long operator()(unsigned long id) const;
};

} // namespace TV
