#include "table/operands.h"

namespace TV {

unsigned long numberOfOperands(const SymbolicExpr& expr) {
    return expr.isMultiExpr() ? expr.getNumInputs() : expr.getNumArgs();
}

unsigned long operandId(const SymbolicExpr& expr, unsigned long index) {
    return expr.isMultiExpr() ? expr.getInput(index) : expr.getArg(index);
}

unsigned long internBinary(const SymbolicExprTable& table, SymbolicOp op, unsigned long left,
                           unsigned long right) {
    switch (op) {
    case SymbolicPlusOp:
        return SymbolicPlusExpr(table, left, right).getId(table);
    case SymbolicMinusOp:
        return SymbolicMinusExpr(table, left, right).getId(table);
    case SymbolicMultiplyOp:
        return SymbolicMultiplyExpr(table, left, right).getId(table);
    case SymbolicDivideOp:
        return SymbolicDivideExpr(table, left, right).getId(table);
    case SymbolicEqualOp:
        return SymbolicEqualExpr(table, left, right).getId(table);
    default:
        return SymbolicGreaterThanExpr(table, left, right).getId(table);
    }
}

} // namespace TV
