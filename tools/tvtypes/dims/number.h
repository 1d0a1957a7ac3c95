/// \file
/// Dimensions that are numbers.
#pragma once

#include "exact/number.h"

#include <tvtypes/symbolicdims.h>

#include <optional>

namespace tvtool::dims {

/// The number that a simplified dimension is. Empty if it is none, or one of more than some
/// thousand digits.
std::optional<exact::Number> numberOf(const TVTypeSys::SymbolicDimsTable& table, int id);

/// What the first dimension is more than the second, whatever their names stand for. Empty if that
/// depends on them.
std::optional<exact::Number> differenceOf(const TVTypeSys::SymbolicDimsTable& table, int a, int b);

} // namespace tvtool::dims
