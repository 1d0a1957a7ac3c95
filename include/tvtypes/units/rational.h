/// \file
/// Numbers of scale factors and offsets of units.
#pragma once

#include <tvtypes/export.h>

#include <boost/rational.hpp>

#include <cstdint>
#include <string>

/// \addtogroup units
/// @{

namespace TVTypeSys {

/// A fraction of two 32-bit integers times a power of ten: numerator / denominator * 10^exponent.
///
/// The fraction is in lowest terms, the denominator is positive, and neither part is divisible by
/// 10, except a numerator of 0. The form is not unique beyond that: 5/1*1e-1 and 1/2*1e0 are the
/// same number and compare unequal.
///
/// Overflow of 32 bits is not an error. Parts that are too wide lose low digits, which sets the
/// flag precision(); products of two parts, and exponents, wrap. An operation throws
/// boost::bad_rational if its result would have a denominator of 0, or a denominator whose sign
/// cannot be moved to the numerator because one of them is -2147483648.
class TVTYPES_API Rational {
  public:
    static const Rational unity; ///< 1/1*1e0
    static const Rational zero;  ///< 0/1*1e0

    /// Creates the number numerator / denominator * 10^exponent, reduced.
    Rational(int numerator, int denominator, int exponent);

    /// Copies the number without the flag: a copy counts as exact.
    constexpr Rational(const Rational& other) noexcept
        : fraction_(other.fraction_), exponent_(other.exponent_), precision_(0) {}
    /// Assigns the number with the flag.
    Rational& operator=(const Rational& other) = default;

    /// \name Parts
    /// @{

    /// Returns a part of the reduced form.
    int numerator() const { return fraction_.numerator(); }
    int denominator() const { return fraction_.denominator(); }
    int exponent() const { return exponent_; }
    /// @}

    /// Returns 1 if safeConvertToRational dropped digits when it created this value or a factor of
    /// it, else 0.
    int precision() const { return precision_; }

    /// Moves factors of ten from both parts to the exponent.
    void simplifyFraction();

    /// Returns numerator / denominator times 10^exponent in double, each of the three correctly
    /// rounded: the same on every machine. A power above 10^308 is infinity.
    double toDouble() const;

    /// Returns the quotient of the values as doubles.
    double operator/(const Rational& other) const;

    /// Returns whether both have the same form. The flags are not compared.
    bool operator==(const Rational& other) const {
        return numerator() == other.numerator() && denominator() == other.denominator() &&
               exponent_ == other.exponent_;
    }
    /// Returns whether the forms differ.
    bool operator!=(const Rational& other) const { return !(*this == other); }

    /// Returns the power, computed in double. Its flag is set if that lost digits; the flag of the
    /// base is not read. A part too wide for a double becomes the largest double.
    Rational operator^(int power) const;

    /// Multiplies by another number. The parts are multiplied in wrapping 32-bit arithmetic. The
    /// flag is taken from `other` if it is not set yet.
    Rational& operator*=(const Rational& other);

    /// Returns a text such as "3/2*1e-1".
    std::string toString() const;

    /// Returns the number numerator / denominator * 10^exponent, with both parts truncated to
    /// integers. Parts beyond 2147483647 are narrowed by a common power of two, or, if their ratio
    /// is too wide, the greater one by powers of ten; this sets the flag. The result is positive if
    /// both parts are, else negative, even if both are negative. NaN is converted to 0, infinity to
    /// the largest double. Specialised for double only.
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

/// The specialisation for double.
template <>
TVTYPES_API Rational Rational::safeConvertToRational<double>(double numerator, double denominator,
                                                             int exponent);

} // namespace TVTypeSys

/// @}
