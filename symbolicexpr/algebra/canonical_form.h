/// \file
/// Canonical form of a rational function.
#pragma once

#include "algebra/fraction.h"

#include <cstdint>

namespace TV {

/// Interns the canonical form of a fraction, operands before operators and from left to right, and
/// returns its id. Each term of the fraction remembers the id of its expression.
std::uint32_t internCanonicalForm(Fraction& fraction, const SymbolicExprTable& table);

} // namespace TV
