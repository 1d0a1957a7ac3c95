/// \file
/// From one unit to another.
#pragma once

#include "units/records.h"

#include <tvtypes/units.h>

#include <string>

namespace tvtool::units {

/// The library's factor beside the exact one, or why there is none. Throws a text::ParseError.
units::UnitFactor factorBetween(const std::string& from, const std::string& to,
                                TVTypeSys::UnitTable& table);

} // namespace tvtool::units
