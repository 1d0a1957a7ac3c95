/// \file
/// Exact numbers of definitions, with a power of pi and the uncertainty of measured values.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <string>

namespace tvdata {

/// Exact rational numbers, without expression templates, whose results refer to their operands.
using Exact = boost::multiprecision::number<boost::multiprecision::cpp_rational::backend_type,
                                            boost::multiprecision::et_off>;
using Integer = boost::multiprecision::number<boost::multiprecision::cpp_int::backend_type,
                                              boost::multiprecision::et_off>;

/// A positive number as a definition states it: rational * pi^piPower.
struct Number {
    Exact rational = 1;
    int piPower = 0;
    /// Relative standard uncertainty of a measured value; 0 for an exact number.
    Exact uncertainty = 0;

    /// Returns the value with pi replaced by one fraction for all units, so that the ratios of
    /// angles stay exact.
    Exact value() const;
    /// Throws Fault if both numbers are measured: they could be correlated.
    Number& operator*=(const Number& other);
};

/// Returns a power. \pre `number` is not 0 if `power` is negative.
Exact raised(const Exact& number, int power);
Number raised(const Number& number, int power);

/// Divides a number by all its factors `prime` and returns their count. \pre `number` is not 0.
int divideOut(Integer& number, int prime);

/// Returns the decimal logarithm of a positive number, up to an error of one.
int magnitude(const Exact& number);

/// Formats the rational number and the power of pi without rounding: "pi*1/180", "254e-4".
std::string formatExact(const Number& number);

} // namespace tvdata
