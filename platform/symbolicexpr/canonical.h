/// \file
/// The canonical form of what expressions mean.
#pragma once

#include "fraction.h"

#include <cstdint>

namespace TV {

/// Enters the canonical form into the table, parts before wholes and from the left. The id.
std::uint32_t enterCanonicalForm(const Fraction& fraction, const SymbolicExprTable& table);

} // namespace TV
