/// \file
/// Expressions and their parts, whatever they are.
#pragma once

#include <symbolicexpr/expr.h>

namespace TV {

/// How many operands or entries an expression has.
unsigned long numberOfParts(const SymbolicExpr& expr);

/// The id of an operand or entry, from 0; `index` has to be below their number.
unsigned long part(const SymbolicExpr& expr, unsigned long index);

/// The id of an operator between two operands.
unsigned long binaryId(const SymbolicExprTable& table, SymbolicOp op, unsigned long left,
                       unsigned long right);

} // namespace TV
