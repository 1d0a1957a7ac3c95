/// \file
/// Fractions of any size.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace tvtool::exact {

using Integer = boost::multiprecision::cpp_int;
using Number = boost::multiprecision::cpp_rational;

/// A power; empty if it takes more than some thousand digits, or for 0 to a negative one.
std::optional<Number> power(const Number& base, std::int64_t power);

/// A product; empty if it takes more than some thousand digits.
std::optional<Number> product(const Number& a, const Number& b);

/// 10 to this power, which takes as many digits.
Number powerOfTen(int power);

/// The number as it is best read, without loss: 0.3048, 10^9, 45967/180.
std::string fractionText(const Number& number);

/// Whether two numbers differ by no more than this part of the greater one.
bool areClose(const Number& a, const Number& b, double part);

} // namespace tvtool::exact
