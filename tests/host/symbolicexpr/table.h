#pragma once

#include <cstddef>

namespace TV {

class SymbolicExpr;

class SymbolicExprTable {
  public:
    SymbolicExprTable();
    ~SymbolicExprTable();
    std::size_t size() const;
    const SymbolicExpr& get(unsigned long id) const;
};

} // namespace TV
