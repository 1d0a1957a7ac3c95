/// \file
/// The number in which scale factors and offsets of units are held.
#pragma once

#include <tvtypes/export.h>

#include <boost/rational.hpp>

#include <cstdint>
#include <string>

namespace TVTypeSys {

/// A fraction of two 32-bit integers times a power of ten: numerator / denominator * 10^exponent.
///
/// The fraction is in lowest terms, the denominator positive. Neither part is divisible by 10,
/// except a numerator of 0. The form is not unique beyond that: 5/1*1e-1 and 1/2*1e0 are the same
/// number and compare unequal.
///
/// Nothing is reported when 32 bits do not suffice. Parts that are too wide lose low digits, which
/// the flag precision() tells of; products of two parts, and exponents, wrap. An operation that
/// would end with a denominator of 0, or with parts that no sign can be moved out of, throws
/// boost::bad_rational.
class TVTYPES_API Rational {
  public:
    static const Rational unity; ///< 1/1*1e0
    static const Rational zero;  ///< 0/1*1e0

    Rational(int numerator, int denominator, int exponent);

    /// The same number without the flag: a copy counts as exact.
    constexpr Rational(const Rational& other) noexcept
        : fraction_(other.fraction_), exponent_(other.exponent_), precision_(0) {}
    /// Takes over all of the other, the flag included.
    Rational& operator=(const Rational& other) = default;

    int numerator() const { return fraction_.numerator(); }
    int denominator() const { return fraction_.denominator(); }
    int exponent() const { return exponent_; }

    /// 1 if digits were dropped when the value was made by safeConvertToRational or multiplied by
    /// such a value, else 0.
    int precision() const { return precision_; }

    /// Moves factors of ten out of both parts into the exponent.
    void simplifyFraction();

    double toDouble() const;

    /// The quotient of the two numbers.
    double operator/(const Rational& other) const;

    /// Whether both have the same form; the flags do not matter.
    bool operator==(const Rational& other) const {
        return numerator() == other.numerator() && denominator() == other.denominator() &&
               exponent_ == other.exponent_;
    }
    bool operator!=(const Rational& other) const { return !(*this == other); }

    /// The power, formed in double. Its flag tells whether that lost digits; the flag of the base
    /// is not looked at. A part too wide for a double counts as the greatest double.
    Rational operator^(int power) const;

    /// Both parts are multiplied in wrapping 32-bit arithmetic. The flag is taken from the other
    /// if it is not set yet.
    Rational& operator*=(const Rational& other);

    /// "3/2*1e-1"
    std::string toString() const;

    /// The number numerator / denominator * 10^exponent. Fractions of the two are cut off. Parts
    /// beyond 2147483647 are narrowed together, or, if their ratio is too wide, the greater one by
    /// powers of ten; this sets the flag. The result is positive if both are, else negative, also
    /// where both are negative. A part that is NaN counts as 0, an infinite one as the greatest
    /// double. Exists for double.
    template <class Number>
    static Rational safeConvertToRational(Number numerator, Number denominator, int exponent);

  private:
    constexpr explicit Rational(int whole) noexcept
        : fraction_(whole), exponent_(0), precision_(0) {}
    Rational(boost::rational<int> fraction, int exponent, int precision);

    boost::rational<int> fraction_;
    std::int32_t exponent_;
    std::int32_t precision_;
};

template <>
TVTYPES_API Rational Rational::safeConvertToRational<double>(double numerator, double denominator,
                                                             int exponent);

} // namespace TVTypeSys
