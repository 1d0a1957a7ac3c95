/// \file
/// Arithmetic of rational functions of names.
#pragma once

#include "algebra/polynomial.h"

#include <optional>
#include <vector>

namespace TV {

/// A rational function in lowest terms: numerator and denominator have no common factor, integers
/// included, and the first term of the denominator is positive. Zero is 0 over 1. So equal
/// functions have equal numerators and denominators.
struct Fraction {
    Polynomial numerator;
    Polynomial denominator = Integer(1);
};

/// A fraction that is added, or multiplied, `times` times.
struct Multiple {
    Integer times;
    const Fraction* fraction;
};

/// Sum, product and quotient. Each returns no value if the result, or an intermediate result,
/// exceeds the limits of limits.h; the quotient also if the divisor is zero. \pre There is at least
/// one factor.
std::optional<Fraction> sum(const std::vector<Multiple>& addends, const NameOrder& order);
std::optional<Fraction> product(const std::vector<Multiple>& factors, const NameOrder& order);
std::optional<Fraction> quotient(const Fraction& a, const Fraction& b, const NameOrder& order);

} // namespace TV
