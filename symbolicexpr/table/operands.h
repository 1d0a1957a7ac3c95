/// \file
/// Uniform access to the operands of operators and the entries of lists.
#pragma once

#include <symbolicexpr/expr.h>

namespace TV {

/// Returns the number of operands of an operator or entries of a list; 0 for names and numbers.
unsigned long numberOfOperands(const SymbolicExpr& expr);

/// Returns the id of an operand or entry. \pre `index` is less than numberOfOperands().
unsigned long operandId(const SymbolicExpr& expr, unsigned long index);

/// Interns a binary operator and returns its id.
unsigned long internBinary(const SymbolicExprTable& table, SymbolicOp op, unsigned long left,
                           unsigned long right);

} // namespace TV
