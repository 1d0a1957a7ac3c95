/// \file
/// Integers of any size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace TV {

/// Stored in place while it fits 64 bits, else on the heap as an integer of FLINT.
class Integer {
  public:
    Integer(std::int64_t value = 0) : value_(value) {}
    /// Parses decimal digits with an optional minus; 0 for any other text.
    explicit Integer(const std::string& digits);
    Integer(const Integer& other)
        : value_(other.value_), big_(other.big_ ? cloneBig(*other.big_) : nullptr) {}
    Integer(Integer&& other) noexcept = default;
    Integer& operator=(const Integer& other) { return *this = Integer(other); }
    Integer& operator=(Integer&& other) noexcept = default;
    ~Integer() = default;

    bool isZero() const { return value_ == 0 && !big_; }
    bool isOne() const { return value_ == 1 && !big_; }
    bool isMinusOne() const { return value_ == -1 && !big_; }
    bool isNegative() const { return big_ ? isBigNegative() : value_ < 0; }

    Integer& operator+=(const Integer& other);
    Integer& operator*=(const Integer& other);
    void negate();
    /// \pre The divisor is not zero and leaves no remainder.
    void divideExactly(const Integer& divisor);

    /// Returns the value if it is from 0 to 2^32-1.
    std::optional<std::uint32_t> asExponent() const {
        if (big_ || value_ < 0 || value_ > UINT32_MAX) {
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(value_);
    }

    /// Returns the number of bits of the magnitude.
    std::size_t bits() const;

    /// Returns decimal digits, with a minus if negative.
    std::string text() const;
    /// Returns the value if it is stored in place.
    std::optional<std::int64_t> small() const {
        return big_ ? std::nullopt : std::optional(value_);
    }

  private:
    friend class FlintInteger;
    friend Integer greatestCommonDivisor(const Integer& a, const Integer& b);
    struct Big;
    struct Destroy {
        void operator()(Big* big) const;
    };
    using BigPointer = std::unique_ptr<Big, Destroy>;

    static BigPointer cloneBig(const Big& big);
    bool isBigNegative() const;

    std::int64_t value_;
    BigPointer big_;
};

/// Returns the greatest common divisor, which is not negative; 0 for two zeros.
Integer greatestCommonDivisor(const Integer& a, const Integer& b);
/// Returns the least common multiple. \pre Both are positive.
Integer leastCommonMultiple(const Integer& a, const Integer& b);

} // namespace TV
