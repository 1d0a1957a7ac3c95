/// \file
/// How far expressions are multiplied out.
#pragma once

#include "algebra/fraction.h"

#include <cstddef>

namespace TV::bounds {

inline constexpr std::size_t maximumTerms = 4096;
/// Of a polynomial with its powers spelled out.
inline constexpr std::size_t maximumFactors = std::size_t(1) << 20;
/// Of all numbers of a polynomial together. More than a text that can be read has.
inline constexpr std::size_t maximumBits = std::size_t(1) << 22;

/// Whether a fraction is one to be written out.
bool hold(const Fraction& fraction);

/// Whether the product may be one to be written out, and takes little to be computed.
bool mayMultiply(const Polynomial& a, const Polynomial& b);

/// Whether a common divisor of the two takes little to be found.
bool mayDivide(const Polynomial& a, const Polynomial& b);

/// Whether any power with this exponent of so many terms is small. The exponent is at least 1.
bool mayRaise(const Polynomial& base, std::uint32_t exponent);

} // namespace TV::bounds
