/// \file
/// Arithmetic of polynomials that have more than one term.
#pragma once

#include "algebra/polynomial.h"

namespace TV {

/// The product of two polynomials for which bounds::mayMultiply holds.
Polynomial multiply(const Polynomial& a, const Polynomial& b, const Names& names);

/// The power of a polynomial for which bounds::mayRaise holds.
Polynomial raise(const Polynomial& base, std::uint32_t exponent, const Names& names);

/// Divides both by their greatest common divisor, and gives it; its first term is positive. Neither
/// may be zero.
Polynomial takeCommonDivisor(Polynomial& a, Polynomial& b, const Names& names);

} // namespace TV
