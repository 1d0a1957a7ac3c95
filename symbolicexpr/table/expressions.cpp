#include <symbolicexpr/expr.h>

#include "table/contents.h"
#include "table/errors.h"

#include <boost/container_hash/hash.hpp>

#include <algorithm>
#include <cassert>
#include <charconv>
#include <limits>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace TV {
namespace {

std::size_t hashKey(SymbolicOp op, std::size_t left, std::size_t right = 0) {
    // Ids are small and consecutive, so the multiplication spreads their few bits over the word.
    std::size_t hash = (left << 32) ^ right ^ (static_cast<std::size_t>(op) << 60);
    hash *= 0xbf58476d1ce4e5b9ULL;
    return hash ^ (hash >> 31);
}

std::size_t hashKey(std::int64_t value) {
    const auto bits = static_cast<std::size_t>(value);
    return hashKey(SymbolicNumberOp, bits & UINT32_MAX, bits >> 32);
}

std::size_t hashKey(SymbolicOp op, const std::string& text) {
    return hashKey(op, boost::hash<std::string>()(text));
}

std::size_t hashKey(SymbolicOp op, const std::vector<unsigned long>& inputs) {
    return hashKey(op, boost::hash_range(inputs.begin(), inputs.end()));
}

template <class Expr>
SymbolicExpr* placeCopy(const Expr& expr, std::pmr::memory_resource& memory) {
    return new (memory.allocate(sizeof(Expr), alignof(Expr))) Expr(expr);
}

/// Narrows an id to 32 bits. An id that no table can have becomes another such id.
std::uint32_t storedId(unsigned long id) {
    constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
    return id < none ? static_cast<std::uint32_t>(id) : none;
}

} // namespace

SymbolicExpr::~SymbolicExpr() = default;

unsigned long SymbolicExpr::getId(const SymbolicExprTable& table) const {
    return table.contents_->intern(*this);
}

unsigned long SymbolicExpr::getDimension(unsigned long index) const {
    if (index >= getNumDimensions()) {
        throw std::out_of_range("a list has no dimension with this index");
    }
    return getInput(index);
}

unsigned long SymbolicExpr::getArg(unsigned long) const { return 0; }
unsigned long SymbolicExpr::getInput(unsigned long) const { return 0; }

SymbolicString::SymbolicString(const SymbolicExprTable&, const std::string& text)
    : SymbolicExpr(SymbolicNameOp, hashKey(SymbolicNameOp, text)), text_(text) {}

bool SymbolicString::hasSamePartsAs(const SymbolicExpr& other) const {
    return text_ == static_cast<const SymbolicString&>(other).text_;
}

SymbolicExpr* SymbolicString::copyTo(std::pmr::memory_resource& memory) const {
    return placeCopy(*this, memory);
}

/// Canonical representation of a decimal text: a value if it fits 64 bits, else digits without
/// leading zeros.
struct SymbolicIntValue::Number {
    explicit Number(const std::string& text) {
        const bool isNegative = !text.empty() && text.front() == '-';
        const std::size_t first = isNegative ? 1 : 0;
        if (first == text.size() || text.find_first_not_of("0123456789", first) != text.npos) {
            throw std::invalid_argument("not a decimal integer");
        }
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc::result_out_of_range) {
            value = 0;
            digits = text;
            digits.erase(first, text.find_first_not_of('0', first) - first);
        }
    }

    std::int64_t value = 0;
    std::string digits;
};

SymbolicIntValue::SymbolicIntValue(const SymbolicExprTable& table, int value)
    : SymbolicIntValue(table, std::int64_t(value)) {}

SymbolicIntValue::SymbolicIntValue(const SymbolicExprTable&, std::int64_t value)
    : SymbolicExpr(SymbolicNumberOp, hashKey(value)), value_(value) {}

SymbolicIntValue::SymbolicIntValue(const SymbolicExprTable&, const std::string& digits)
    : SymbolicIntValue(Number(digits)) {}

SymbolicIntValue::SymbolicIntValue(Number number)
    : SymbolicExpr(SymbolicNumberOp, number.digits.empty()
                                         ? hashKey(number.value)
                                         : hashKey(SymbolicNumberOp, number.digits)),
      value_(number.value),
      digits_(std::move(number.digits)) {}

std::string SymbolicIntValue::text() const { return isSmall() ? std::to_string(value_) : digits_; }

bool SymbolicIntValue::hasSamePartsAs(const SymbolicExpr& other) const {
    const auto& number = static_cast<const SymbolicIntValue&>(other);
    return value_ == number.value_ && digits_ == number.digits_;
}

SymbolicExpr* SymbolicIntValue::copyTo(std::pmr::memory_resource& memory) const {
    return placeCopy(*this, memory);
}

SymbolicUnaryMinusExpr::SymbolicUnaryMinusExpr(const SymbolicExprTable& table,
                                               const SymbolicExpr& operand)
    : SymbolicUnaryMinusExpr(table, operand.getId(table)) {}

SymbolicUnaryMinusExpr::SymbolicUnaryMinusExpr(const SymbolicExprTable&, unsigned long operand)
    : SymbolicExpr(SymbolicUnaryMinusOp, hashKey(SymbolicUnaryMinusOp, storedId(operand))),
      operand_(storedId(operand)) {}

unsigned long SymbolicUnaryMinusExpr::getArg([[maybe_unused]] unsigned long index) const {
    assert(index == 0);
    return operand_;
}

bool SymbolicUnaryMinusExpr::hasSamePartsAs(const SymbolicExpr& other) const {
    return operand_ == static_cast<const SymbolicUnaryMinusExpr&>(other).operand_;
}

SymbolicExpr* SymbolicUnaryMinusExpr::copyTo(std::pmr::memory_resource& memory) const {
    return placeCopy(*this, memory);
}

SymbolicBinaryExpr::SymbolicBinaryExpr(SymbolicOp op, const SymbolicExprTable& table,
                                       const SymbolicExpr& left, const SymbolicExpr& right)
    // The braced list fixes the order in which the operands are interned: left, then right.
    : SymbolicBinaryExpr(op, std::array<unsigned long, 2>{left.getId(table), right.getId(table)}) {}

SymbolicBinaryExpr::SymbolicBinaryExpr(SymbolicOp op, const std::array<unsigned long, 2>& operands)
    : SymbolicExpr(op, hashKey(op, storedId(operands[0]), storedId(operands[1]))),
      left_(storedId(operands[0])),
      right_(storedId(operands[1])) {}

unsigned long SymbolicBinaryExpr::getArg(unsigned long index) const {
    assert(index < 2);
    return index == 0 ? left_ : right_;
}

bool SymbolicBinaryExpr::hasSamePartsAs(const SymbolicExpr& other) const {
    const auto& binary = static_cast<const SymbolicBinaryExpr&>(other);
    return left_ == binary.left_ && right_ == binary.right_;
}

template <SymbolicOp operation>
SymbolicExpr* SymbolicBinaryExprOf<operation>::copyTo(std::pmr::memory_resource& memory) const {
    return placeCopy(*this, memory);
}

template class SymbolicBinaryExprOf<SymbolicPlusOp>;
template class SymbolicBinaryExprOf<SymbolicMinusOp>;
template class SymbolicBinaryExprOf<SymbolicMultiplyOp>;
template class SymbolicBinaryExprOf<SymbolicDivideOp>;
template class SymbolicBinaryExprOf<SymbolicEqualOp>;
template class SymbolicBinaryExprOf<SymbolicGreaterThanOp>;

SymbolicMultiExpr::SymbolicMultiExpr(SymbolicOp op, const std::vector<unsigned long>& inputs)
    : SymbolicExpr(op, hashKey(op, inputs)), inputs_(inputs) {}

bool SymbolicMultiExpr::hasSamePartsAs(const SymbolicExpr& other) const {
    return inputs_ == static_cast<const SymbolicMultiExpr&>(other).inputs_;
}

bool SymbolicMultiExpr::hasPartsBelow(std::size_t id) const {
    return std::all_of(inputs_.begin(), inputs_.end(),
                       [id](unsigned long input) { return input < id; });
}

SymbolicExpr* SymbolicNDExpr::copyTo(std::pmr::memory_resource& memory) const {
    return placeCopy(*this, memory);
}

} // namespace TV
