#include "units/power_of_ten.h"
#include "units/wrapping_arithmetic.h"

#include <tvtypes/units/rational.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace TVTypeSys {

namespace {

using Limits = std::numeric_limits<int>;

constexpr double greatestPart = Limits::max();
constexpr int greatestPartExponent = 31;
constexpr double greatestPartLog10 = 9.331929865381182;

/// Reduces a fraction. Boost's normalisation negates and divides in int, which overflows for
/// INT_MIN.
boost::rational<int> reduced(int numerator, int denominator) {
    if (denominator == 1) { // the most frequent one
        return boost::rational<int>(numerator);
    }
    if (denominator == 0 || (numerator != Limits::min() && denominator != Limits::min())) {
        return {numerator, denominator};
    }
    const std::int64_t divisor = std::gcd(std::int64_t{numerator}, std::int64_t{denominator});
    const std::int64_t sign = denominator < 0 ? -1 : 1;
    const std::int64_t top = sign * numerator / divisor;
    const std::int64_t bottom = sign * denominator / divisor;
    if (top > Limits::max() || bottom > Limits::max()) {
        throw boost::bad_rational("bad rational: non-zero singular denominator");
    }
    return {static_cast<int>(top), static_cast<int>(bottom)};
}

/// Magnitude of a part: at most the largest double, and 0 for NaN.
double magnitude(double part) {
    return std::isnan(part) ? 0.0 : std::min(std::abs(part), std::numeric_limits<double>::max());
}

int binaryExponent(double value) {
    int exponent = 0;
    std::frexp(value, &exponent);
    return exponent;
}

/// Scales both parts by the power of two that makes `reference` fit 31 bits.
void scaleBoth(double& a, double& b, double reference) {
    const int excess = binaryExponent(reference) - greatestPartExponent + 1;
    a = std::ldexp(a, -excess);
    b = std::ldexp(b, -excess);
}

/// Narrows parts of which at least one is too wide. Returns the power of ten to add to the
/// exponent.
int narrow(double& a, double& b) {
    const double greater = std::max(a, b);
    const double smaller = std::min(a, b);
    const int excess = binaryExponent(greater) - greatestPartExponent;
    if (binaryExponent(smaller) >= excess + 1) {
        scaleBoth(a, b, greater);
        return 0;
    }
    if (smaller > greatestPart) {
        scaleBoth(a, b, smaller);
    }
    double& wide = a > b ? a : b;
    const int power = static_cast<int>(std::ceil(std::log10(wide) - greatestPartLog10));
    wide /= powerOfTen(power);
    return &wide == &a ? power : -power;
}

/// std::pow, faster for a base or exponent of 1, which are the common cases.
double partPower(double part, double power) {
    return power == 1.0 || part == 1.0 ? part : std::pow(part, power);
}

double valueOf(const Rational& number) {
    return powerOfTen(number.exponent()) *
           (static_cast<double>(number.numerator()) / number.denominator());
}

} // namespace

constinit const Rational Rational::unity(1);
constinit const Rational Rational::zero(0);

Rational::Rational(int numerator, int denominator, int exponent)
    : Rational(reduced(numerator, denominator), exponent, 0) {}

Rational::Rational(boost::rational<int> fraction, int exponent, int precision)
    : fraction_(fraction), exponent_(exponent), precision_(precision) {
    simplifyFraction();
}

void Rational::simplifyFraction() {
    int top = numerator();
    int bottom = denominator();
    while (top != 0 && top % 10 == 0) {
        top /= 10;
        exponent_ = wrappingSum(exponent_, 1);
    }
    while (bottom % 10 == 0) {
        bottom /= 10;
        exponent_ = wrappingSum(exponent_, -1);
    }
    if (top != numerator() || bottom != denominator()) {
        fraction_ = reduced(top, bottom);
    }
}

double Rational::toDouble() const { return valueOf(*this); }

double Rational::operator/(const Rational& other) const { return valueOf(*this) / valueOf(other); }

Rational Rational::operator^(int power) const {
    const int resultExponent = wrappingProduct(power, exponent_);
    const double top = numerator();
    const double bottom = denominator();
    if (power > 0) {
        return safeConvertToRational<double>(partPower(top, power), partPower(bottom, power),
                                             resultExponent);
    }
    const double inverted = -static_cast<double>(power);
    return safeConvertToRational<double>(partPower(bottom, inverted), partPower(top, inverted),
                                         resultExponent);
}

Rational& Rational::operator*=(const Rational& other) {
    const int precision = precision_ == 0 ? other.precision_ : precision_;
    *this = safeConvertToRational<double>(wrappingProduct(numerator(), other.numerator()),
                                          wrappingProduct(denominator(), other.denominator()),
                                          wrappingSum(exponent_, other.exponent_));
    precision_ = precision;
    return *this;
}

std::string Rational::toString() const {
    std::string text = std::to_string(numerator());
    text.append("/").append(std::to_string(denominator()));
    text.append("*1e").append(std::to_string(exponent_));
    return text;
}

template <>
Rational Rational::safeConvertToRational<double>(double numerator, double denominator,
                                                 int exponent) {
    const bool positive = numerator > 0 && denominator > 0;
    double a = magnitude(numerator);
    double b = magnitude(denominator);
    const bool lossy = a > greatestPart || b > greatestPart;
    if (lossy) {
        exponent = wrappingSum(exponent, narrow(a, b));
    }
    const int top = static_cast<int>(positive ? a : -a);
    const int bottom = static_cast<int>(b);
    return Rational(reduced(top, bottom), exponent, lossy ? 1 : 0);
}

} // namespace TVTypeSys
