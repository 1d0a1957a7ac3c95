#include "dims/number.h"

#include <symbolicexpr/expr.h>

#include <string>

namespace tvtool::dims {

namespace {

using TVTypeSys::SymbolicDimsTable;

std::optional<exact::Integer> integerAt(const SymbolicDimsTable& table,
                                        unsigned long expressionId) {
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    if (!expr.isNumValue()) {
        return std::nullopt;
    }
    constexpr std::size_t longest = 4000;
    const std::string& digits = static_cast<const TV::SymbolicIntValue&>(expr).text();
    return digits.size() <= longest ? std::optional(exact::Integer(digits)) : std::nullopt;
}

} // namespace

std::optional<exact::Number> numberOf(const SymbolicDimsTable& table, int id) {
    const auto expressionId = static_cast<unsigned long>(id) + 1;
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    if (expr.op() != TV::SymbolicDivideOp) {
        const std::optional<exact::Integer> integer = integerAt(table, expressionId);
        return integer ? std::optional(exact::Number(*integer)) : std::nullopt;
    }
    const std::optional<exact::Integer> numerator = integerAt(table, expr.getArg(0));
    const std::optional<exact::Integer> denominator = integerAt(table, expr.getArg(1));
    return numerator && denominator && *denominator != 0
               ? std::optional(exact::Number(*numerator, *denominator))
               : std::nullopt;
}

std::optional<exact::Number> differenceOf(const SymbolicDimsTable& table, int a, int b) {
    return numberOf(table, (table.getSymbolicDims(a) - table.getSymbolicDims(b)).getId());
}

} // namespace tvtool::dims
