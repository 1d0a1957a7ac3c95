#include "algebra/integer.h"

#include "algebra/flint_integer.h"

#include <cassert>
#include <numeric>

namespace TV {

namespace {

std::uint64_t magnitude(std::int64_t value) {
    return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

} // namespace

Integer::Integer(const std::string& digits) : value_(0) {
    requireIntegerMemory(4 * digits.size());
    FlintInteger value;
    if (fmpz_set_str(value.get(), digits.c_str(), 10) == 0) {
        *this = value.integer();
    }
}

void Integer::Destroy::operator()(Big* big) const { delete big; }

Integer::BigPointer Integer::cloneBig(const Big& big) {
    requireIntegerMemory(fmpz_bits(big.value));
    BigPointer copy(new Big);
    fmpz_set(copy->value, big.value);
    return copy;
}

bool Integer::isBigNegative() const { return fmpz_sgn(big_->value) < 0; }

Integer& Integer::operator+=(const Integer& other) {
    std::int64_t sum = 0;
    if (!big_ && !other.big_ && !__builtin_add_overflow(value_, other.value_, &sum)) {
        value_ = sum;
        return *this;
    }
    requireIntegerMemory(bits() + other.bits());
    FlintInteger result(*this);
    fmpz_add(result.get(), result.get(), FlintInteger(other).get());
    return *this = result.integer();
}

Integer& Integer::operator*=(const Integer& other) {
    std::int64_t product = 0;
    if (!big_ && !other.big_ && !__builtin_mul_overflow(value_, other.value_, &product)) {
        value_ = product;
        return *this;
    }
    requireIntegerMemory(bits() + other.bits());
    FlintInteger result(*this);
    fmpz_mul(result.get(), result.get(), FlintInteger(other).get());
    return *this = result.integer();
}

void Integer::negate() { *this *= Integer(-1); }

void Integer::divideExactly(const Integer& divisor) {
    assert(!divisor.isZero());
    if (!big_ && !divisor.big_ && divisor.value_ != -1) {
        value_ /= divisor.value_;
        return;
    }
    requireIntegerMemory(bits() + divisor.bits());
    FlintInteger quotient(*this);
    fmpz_divexact(quotient.get(), quotient.get(), FlintInteger(divisor).get());
    *this = quotient.integer();
}

std::size_t Integer::bits() const {
    return big_ ? fmpz_bits(big_->value) : FLINT_BIT_COUNT(magnitude(value_));
}

std::string Integer::text() const {
    if (!big_) {
        return std::to_string(value_);
    }
    requireIntegerMemory(2 * bits());
    std::string digits(fmpz_sizeinbase(big_->value, 10) + 2, '\0'); // room for a sign and a null
    fmpz_get_str(digits.data(), 10, big_->value);
    digits.resize(digits.find('\0'));
    return digits;
}

Integer greatestCommonDivisor(const Integer& a, const Integer& b) {
    if (!a.big_ && !b.big_) {
        const std::uint64_t divisor = std::gcd(magnitude(a.value_), magnitude(b.value_));
        if (divisor <= INT64_MAX) {
            return static_cast<std::int64_t>(divisor);
        }
    }
    requireIntegerMemory(a.bits() + b.bits());
    FlintInteger divisor(a);
    fmpz_gcd(divisor.get(), divisor.get(), FlintInteger(b).get());
    return divisor.integer();
}

Integer leastCommonMultiple(const Integer& a, const Integer& b) {
    assert(!a.isZero() && !a.isNegative() && !b.isZero() && !b.isNegative());
    requireIntegerMemory(a.bits() + b.bits());
    FlintInteger multiple(a);
    fmpz_lcm(multiple.get(), multiple.get(), FlintInteger(b).get());
    return multiple.integer();
}

} // namespace TV
