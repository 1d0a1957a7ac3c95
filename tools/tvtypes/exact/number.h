/// \file
/// Integers and fractions of any size.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace tvtool::exact {

using Integer = boost::multiprecision::cpp_int;
using Number = boost::multiprecision::cpp_rational;

/// Returns a power; empty if it takes more than some thousand digits, or for 0 to a negative one.
std::optional<Number> power(const Number& base, std::int64_t power);

/// Returns a product; empty if it takes more than some thousand digits.
std::optional<Number> product(const Number& a, const Number& b);

/// Returns a power of ten. Its number of digits is not limited.
Number powerOfTen(int power);

/// Returns the exact number in the form that is easiest to read: 0.3048, 10^9 or 45967/180.
std::string fractionText(const Number& number);

/// Returns whether two numbers differ by at most this part of the larger magnitude.
bool areClose(const Number& a, const Number& b, double part);

} // namespace tvtool::exact
