/// \file
/// Rational functions of names.
#pragma once

#include "algebra/polynomial.h"

#include <optional>
#include <vector>

namespace TV {

/// Numerator over denominator in the one way to write them: without a common factor, numbers
/// included, and the first term of the denominator positive. Zero is 0 over 1.
struct Fraction {
    Polynomial numerator;
    Polynomial denominator = Integer(1);
};

/// A fraction that is added, or multiplied, so many times.
struct Multiple {
    Integer times;
    const Fraction* fraction;
};

/// Results have no value where they would be beyond all bounds; the quotient also if the divisor is
/// zero. There is at least one factor.
std::optional<Fraction> sum(const std::vector<Multiple>& addends, const Names& names);
std::optional<Fraction> product(const std::vector<Multiple>& factors, const Names& names);
std::optional<Fraction> quotient(const Fraction& a, const Fraction& b, const Names& names);

} // namespace TV
