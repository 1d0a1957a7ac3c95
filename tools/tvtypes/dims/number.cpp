#include "dims/number.h"

#include <symbolicexpr/expr.h>

#include <string>

namespace tvtool::dims {

namespace {

using boost::multiprecision::cpp_int;
using TVTypeSys::SymbolicDimsTable;

std::optional<cpp_int> integerAt(const SymbolicDimsTable& table, unsigned long expressionId) {
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    if (!expr.isNumValue()) {
        return std::nullopt;
    }
    constexpr std::size_t longest = 4000;
    const std::string& digits = static_cast<const TV::SymbolicIntValue&>(expr).text();
    return digits.size() <= longest ? std::optional(cpp_int(digits)) : std::nullopt;
}

} // namespace

std::optional<Number> numberOf(const SymbolicDimsTable& table, int id) {
    const auto expressionId = static_cast<unsigned long>(id) + 1;
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    if (expr.op() != TV::SymbolicDivideOp) {
        const std::optional<cpp_int> integer = integerAt(table, expressionId);
        return integer ? std::optional(Number(*integer)) : std::nullopt;
    }
    const std::optional<cpp_int> numerator = integerAt(table, expr.getArg(0));
    const std::optional<cpp_int> denominator = integerAt(table, expr.getArg(1));
    return numerator && denominator && *denominator != 0
               ? std::optional(Number(*numerator, *denominator))
               : std::nullopt;
}

std::optional<Number> differenceOf(const SymbolicDimsTable& table, int a, int b) {
    return numberOf(table, (table.getSymbolicDims(a) - table.getSymbolicDims(b)).getId());
}

} // namespace tvtool::dims
