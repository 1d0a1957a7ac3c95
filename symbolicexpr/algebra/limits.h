/// \file
/// Limits on the expansion of products, powers and quotients.
#pragma once

#include "algebra/fraction.h"

#include <cstddef>
#include <cstdint>

namespace TV::limits {

/// Terms of a polynomial in a canonical form.
inline constexpr std::size_t maximumTerms = 4096;
/// Factors of a polynomial, powers written as repeated factors.
inline constexpr std::size_t maximumFactors = std::size_t(1) << 20;
/// Bits of all coefficients of a polynomial. More than the longest text that can be parsed holds.
inline constexpr std::size_t maximumBits = std::size_t(1) << 22;

/// Distinct monomials of a product that is still computed, although all but maximumTerms of them
/// have to cancel for the result to be within the limits.
inline constexpr std::size_t maximumMonomials = std::size_t(1) << 16;

/// Returns whether a fraction is within these limits, so that its canonical form can be interned.
bool admits(const Fraction& fraction);

/// Returns whether the product can be within the limits and takes little time to compute.
bool mayMultiply(const Polynomial& a, const Polynomial& b);

/// Returns whether a common divisor of two polynomials takes little time to compute.
/// \pre Neither is zero.
bool mayDivide(const Polynomial& a, const Polynomial& b);

/// Returns the most terms that a power of a polynomial can have, or a number above
/// maximumMonomials. \pre `exponent` is at least 1.
std::size_t termsOfPower(std::size_t terms, std::uint32_t exponent);

/// Returns whether every power with this exponent of a base with so many terms is small.
/// \pre `exponent` is at least 1.
bool mayRaise(const Polynomial& base, std::uint32_t exponent);

} // namespace TV::limits
