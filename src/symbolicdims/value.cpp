#include "services/errors.h"
#include "services/own_messages.h"
#include "symbolicdims/ids.h"

#include <tvtypes/symbolicdims/table.h>

#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>

#include <algorithm>
#include <cstdint>
#include <ostream>

namespace TVTypeSys {

namespace {

const TV::SymbolicExpr& getExpression(const SymbolicDimsTable& table, int id) {
    return table.getSymbolicExpr(toExpressionId(id));
}

int simplify(TV::SymbolicExprTable& expressions, unsigned long expressionId) {
    unsigned long ignored = 0;
    return toDimsId(TV::SymbolicExprSimplify(expressions, 10).simplify(expressionId, ignored));
}

template <class Operation>
int computeResult(const SymbolicDimsTable& table, TV::SymbolicExprTable& expressions, int left,
                  int right) {
    const Operation operation(expressions, getExpression(table, left), getExpression(table, right));
    return simplify(expressions, operation.getId(expressions));
}

} // namespace

std::string SymbolicDims::toString() const {
    return TV::SymbolicExprPrinter(*table_->expressions_, 0)(getExpression(*table_, id_));
}

std::string SymbolicDims::getExprWithEmptyInherit() const {
    return id_ == -1 || id_ == 0 ? std::string() : toString();
}

SymbolicDims SymbolicDims::operator+(const SymbolicDims& right) const {
    return {table_,
            computeResult<TV::SymbolicPlusExpr>(*table_, *table_->expressions_, id_, right.id_)};
}

SymbolicDims SymbolicDims::operator-(const SymbolicDims& right) const {
    return {table_,
            computeResult<TV::SymbolicMinusExpr>(*table_, *table_->expressions_, id_, right.id_)};
}

SymbolicDims SymbolicDims::operator*(const SymbolicDims& right) const {
    return {table_, computeResult<TV::SymbolicMultiplyExpr>(*table_, *table_->expressions_, id_,
                                                            right.id_)};
}

SymbolicDims SymbolicDims::operator/(const SymbolicDims& right) const {
    return {table_,
            computeResult<TV::SymbolicDivideExpr>(*table_, *table_->expressions_, id_, right.id_)};
}

SymbolicDims SymbolicDims::operator-() const {
    const TV::SymbolicExprTable& expressions = *table_->expressions_;
    return {table_, internExpression(expressions, TV::SymbolicUnaryMinusExpr(
                                                      expressions, getExpression(*table_, id_)))};
}

unsigned long SymbolicDims::getNumDimensions() const {
    return std::max(getExpression(*table_, id_).getNumDimensions(), 1UL);
}

SymbolicDims SymbolicDims::getDimension(unsigned long index) const {
    const TV::SymbolicExpr& expression = getExpression(*table_, id_);
    const unsigned long available = expression.getNumDimensions();
    if (available == 0) {
        return *this;
    }
    if (index >= available) {
        throwError(own::InvalidDimensionIndex(static_cast<std::int64_t>(index),
                                              static_cast<std::int64_t>(available)));
    }
    return {table_, toDimsId(expression.getDimension(index))};
}

SymbolicDims SymbolicDims::getSize(unsigned long count) const {
    const TV::SymbolicExpr& expression = getExpression(*table_, id_);
    const unsigned long available = expression.getNumDimensions();
    if (available == 0) {
        return *this;
    }
    if (count > available) {
        const auto firstMissing = static_cast<std::int64_t>(available);
        throwError(own::InvalidDimensionIndex(firstMissing, firstMissing));
    }
    TV::SymbolicExprTable& expressions = *table_->expressions_;
    unsigned long product = expression.getDimension(0);
    for (unsigned long i = 1; i < count; ++i) {
        product = TV::SymbolicMultiplyExpr(expressions, product, expression.getDimension(i))
                      .getId(expressions);
    }
    return {table_, simplify(expressions, product)};
}

SymbolicDims SymbolicDims::getSize() const {
    const unsigned long count = getNumDimensions();
    return count == 1 ? *this : getSize(count);
}

void SymbolicDims::print(std::ostream& stream) const {
    stream << "SymbolicDims : '" << toString() << "'" << std::endl;
}

std::ostream& operator<<(std::ostream& stream, const SymbolicDims& dims) {
    dims.print(stream);
    return stream;
}

SymbolicDimsString::SymbolicDimsString(SymbolicDimsTable& table, const std::string& name)
    : SymbolicDimsString(&table, name) {}

SymbolicDimsString::SymbolicDimsString(SymbolicDimsTable* table, const std::string& name)
    : SymbolicDims(table, internExpression(*table->expressions_,
                                           TV::SymbolicString(*table->expressions_, name))) {}

SymbolicDimsIntValue::SymbolicDimsIntValue(SymbolicDimsTable& table, int value)
    : SymbolicDimsIntValue(&table, value) {}

SymbolicDimsIntValue::SymbolicDimsIntValue(SymbolicDimsTable* table, int value)
    : SymbolicDims(table, internExpression(*table->expressions_,
                                           TV::SymbolicIntValue(*table->expressions_, value))) {}

SymbolicDimsND::SymbolicDimsND(SymbolicDimsTable& table, const std::vector<int>& dimensions)
    : SymbolicDimsND(&table, dimensions) {}

SymbolicDimsND::SymbolicDimsND(SymbolicDimsTable* table, const std::vector<int>& dimensions)
    : SymbolicDims(table, internExpression(
                              *table->expressions_,
                              TV::SymbolicNDExpr(*table->expressions_,
                                                 convertSymbDimsId2SymbolicExprId(dimensions)))) {}

} // namespace TVTypeSys

std::vector<unsigned long>
convertSymbDimsId2SymbolicExprId(const std::vector<int>& symbolicDimsIds) {
    std::vector<unsigned long> expressionIds(symbolicDimsIds.size());
    std::transform(symbolicDimsIds.begin(), symbolicDimsIds.end(), expressionIds.begin(),
                   TVTypeSys::toExpressionId);
    return expressionIds;
}
