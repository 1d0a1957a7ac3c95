/// \file
/// What expressions mean.
#pragma once

#include "fraction.h"
#include "normal_forms.h"

#include <cstdint>
#include <optional>

namespace TV {

/// The rational function that an expression of arithmetic is. None where it divides by what is
/// zero, where something else stands in it, and where it is beyond all bounds.
std::optional<Fraction> evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents,
                                 NormalForms& forms);

} // namespace TV
