#pragma once

#include <symbolicexpr/table.h>

namespace TV {

class SymbolicExprSimplify {
  public:
    SymbolicExprSimplify(SymbolicExprTable& table, int effort);
    unsigned long simplify(unsigned long id, unsigned long& simplified) const;
};

} // namespace TV
