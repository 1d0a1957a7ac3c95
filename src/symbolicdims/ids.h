/// \file
/// Conversion between ids of symbolic dimensions and of expressions, which are one greater.
#pragma once

#include <symbolicexpr/expr.h>

namespace TVTypeSys {

/// Converts an id less than -1 to an id that no table has.
inline unsigned long toExpressionId(int id) { return static_cast<unsigned long>(id) + 1; }

inline int toDimsId(unsigned long expressionId) { return static_cast<int>(expressionId) - 1; }

/// Interns an expression and returns its symbolic dimension id.
inline int internExpression(const TV::SymbolicExprTable& expressions,
                            const TV::SymbolicExpr& expression) {
    return toDimsId(expression.getId(expressions));
}

} // namespace TVTypeSys
