/// \file
/// Integers and fractions of any size, and their texts.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvtool::exact {

using Integer = boost::multiprecision::cpp_int;
using Number = boost::multiprecision::cpp_rational;

/// Returns a power; empty if it takes more than some thousand digits, or for 0 to a negative one.
std::optional<Number> power(const Number& base, std::int64_t power);

/// Returns a product; empty if it takes more than some thousand digits.
std::optional<Number> product(const Number& a, const Number& b);

/// Returns a power of ten. Its number of digits is not limited.
Number powerOfTen(int power);

/// Returns whether two numbers differ by at most this part of the larger magnitude.
bool areClose(const Number& a, const Number& b, double part);

/// Returns the exact number in the form that is easiest to read: 0.3048, 10^9 or 45967/180.
std::string fractionText(const Number& number);

/// The parts of an unsigned decimal text, whose value is digits * 10^(exponent - decimals).
struct DecimalParts {
    Integer digits;
    int decimals = 0; ///< number of digits after the point
    int exponent = 0; ///< the written power of ten, limited to +-10^9
};

/// Splits an unsigned decimal text such as 12.5e-3; empty for any other text.
std::optional<DecimalParts> splitDecimal(std::string_view text);

/// Returns the exact value of a decimal text such as -12.5e-3. Throws a std::invalid_argument for
/// any other text, for more than 4000 characters and for a power of ten beyond -5000 to 5000.
Number parseDecimal(std::string_view text);

struct Decimal {
    std::string text;
    bool isExact = true; ///< whether it is not rounded
};

/// Returns a number as a decimal: exactly if it has at most 24 digits, else the fewest digits that
/// determine the nearest double, or 17 digits beyond the normal range of double.
Decimal shortestDecimal(const Number& number);

/// Returns the same digits, with "about " before them if they are rounded. Integers are written
/// without a power of ten as far as their digits are known.
std::string decimalText(const Number& number);

/// Returns the nearest double, with ties to even; infinity beyond the range.
double toDouble(const Number& number);

} // namespace tvtool::exact
