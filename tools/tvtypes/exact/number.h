/// \file
/// Fractions of any size.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace tvtool {

using Exact = boost::multiprecision::cpp_rational;

/// A power; empty if it takes more than some thousand digits, or for 0 to a negative one.
std::optional<Exact> powerOf(const Exact& base, std::int64_t power);

/// A product; empty if it takes more than some thousand digits.
std::optional<Exact> product(const Exact& a, const Exact& b);

/// 10 to this power, which takes as many digits.
Exact powerOfTen(int power);

/// The number as it is best read, without loss: 0.3048, 10^9, 45967/180.
std::string exactText(const Exact& number);

/// Whether two numbers differ by no more than this part of the greater one.
bool areClose(const Exact& a, const Exact& b, double part);

} // namespace tvtool
