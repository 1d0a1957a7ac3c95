/// \file
/// The canonical form of what expressions mean.
#pragma once

#include "algebra/fraction.h"

#include <cstdint>

namespace TV {

/// Enters the canonical form into the table, parts before wholes and from the left. The id. Terms
/// keep what they are written as.
std::uint32_t enterCanonicalForm(Fraction& fraction, const SymbolicExprTable& table);

} // namespace TV
