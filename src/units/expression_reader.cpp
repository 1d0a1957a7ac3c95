#include "units/expression_reader.h"

#include <limits>

namespace TVTypeSys {

namespace {

/// Whether the text can be a placeholder: digits only, at most 2^31-1.
bool isPlaceholder(std::u16string_view text) {
    std::int64_t value = 0;
    for (const char16_t character : text) {
        if (character < u'0' || character > u'9') {
            return false;
        }
        value = value * 10 + (character - u'0');
        if (value > std::numeric_limits<std::int32_t>::max()) {
            return false;
        }
    }
    return true;
}

} // namespace

bool ExpressionReader::open() {
    if (depth() == maximumNesting) {
        return false;
    }
    levels_.back().isGroupAlone = levels_.back().first && depth() > 0;
    Level inner;
    inner.factor = factors_.size();
    levels_.push_back(inner);
    return true;
}

bool ExpressionReader::close() {
    if (depth() == 0) {
        return false;
    }
    const Level inner = levels_.back();
    levels_.pop_back();
    Level& outer = levels_.back();
    if (inner.operand == Operand::SignedNumber) {
        outer.operand = Operand::SignedNumber;
        return outer.first;
    }
    factors_.raise(inner.factor, inner.exponent);
    outer.operand = inner.first ? inner.operand : Operand::Unit;
    return true;
}

bool ExpressionReader::name(std::u16string_view name) {
    factors_.add(name);
    levels_.back().operand = isPlaceholder(name) ? Operand::UnsignedNumber : Operand::Unit;
    return true;
}

bool ExpressionReader::signedNumber() {
    levels_.back().operand = Operand::SignedNumber;
    return levels_.back().first;
}

bool ExpressionReader::power(int exponent) {
    Level& level = levels_.back();
    if (level.operand == Operand::SignedNumber || level.isGroupAlone) {
        return false;
    }
    level.operand = Operand::Unit;
    level.exponent.multiply(exponent);
    return true;
}

bool ExpressionReader::operate(int sign) {
    Level& level = levels_.back();
    const bool isNumber = level.operand == Operand::SignedNumber;
    if (isNumber ? sign > 0 : level.isGroupAlone) {
        return false;
    }
    if (level.operand == Operand::UnsignedNumber && level.first && sign < 0) {
        factors_.truncate(level.factor);
    } else {
        factors_.raise(level.factor, level.exponent);
    }
    level = Level();
    level.factor = factors_.size();
    level.exponent.multiply(sign);
    level.first = false;
    return true;
}

bool ExpressionReader::end() {
    const Level& level = levels_.back();
    if (depth() > 0 || level.operand == Operand::SignedNumber) {
        return false;
    }
    factors_.raise(level.factor, level.exponent);
    return true;
}

} // namespace TVTypeSys
