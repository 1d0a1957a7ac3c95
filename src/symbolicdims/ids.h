/// \file
/// Ids of symbolic dimensions and those of their expressions, which are one more.
#pragma once

#include <symbolicexpr/expr.h>

namespace TVTypeSys {

/// An id that is less than -1 becomes one that no table has.
inline unsigned long expressionIdOf(int id) { return static_cast<unsigned long>(id) + 1; }

inline int dimsIdOf(unsigned long expressionId) { return static_cast<int>(expressionId) - 1; }

/// The id of an expression, which is put into the table if it is new.
inline int registered(const TV::SymbolicExprTable& expressions,
                      const TV::SymbolicExpr& expression) {
    return dimsIdOf(expression.getId(expressions));
}

} // namespace TVTypeSys
