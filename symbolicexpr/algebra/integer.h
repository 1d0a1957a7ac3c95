/// \file
/// Whole numbers of any size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace TV {

/// Is kept in place as long as 64 bits hold it.
class Integer {
  public:
    Integer(std::int64_t value = 0) : value_(value) {}
    explicit Integer(const std::string& digits);
    Integer(const Integer& other)
        : value_(other.value_), big_(other.big_ ? copyOf(*other.big_) : nullptr) {}
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
    /// By a divisor that leaves no rest.
    void divideExactly(const Integer& divisor);

    bool operator==(const Integer& other) const;

    /// The number if it is one from 0 to 2^32-1.
    std::optional<std::uint32_t> asExponent() const {
        if (big_ || value_ < 0 || value_ > UINT32_MAX) {
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(value_);
    }

    /// How many bits the magnitude takes.
    std::size_t bits() const;

    std::string text() const;
    /// The number, if it is kept in place.
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

    static BigPointer copyOf(const Big& big);
    bool isBigNegative() const;

    std::int64_t value_;
    BigPointer big_;
};

/// Not negative; 0 for two zeros.
Integer greatestCommonDivisor(const Integer& a, const Integer& b);
/// Of numbers that are positive.
Integer leastCommonMultiple(const Integer& a, const Integer& b);

} // namespace TV
