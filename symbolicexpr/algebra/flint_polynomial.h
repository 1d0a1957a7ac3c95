/// \file
/// Products, powers and common divisors of polynomials, computed by FLINT. Polynomials of one term
/// are handled by polynomial.h, which is faster.
#pragma once

#include "algebra/polynomial.h"

namespace TV {

/// Returns the product. \pre limits::mayMultiply(a, b).
Polynomial multiply(const Polynomial& a, const Polynomial& b, const NameOrder& order);

/// Returns a power. \pre limits::mayRaise(base, exponent).
Polynomial raise(const Polynomial& base, std::uint32_t exponent, const NameOrder& order);

/// Divides both by their greatest common divisor and returns it; its first term is positive.
/// \pre Neither is zero.
Polynomial divideByCommonDivisor(Polynomial& a, Polynomial& b, const NameOrder& order);

} // namespace TV
