/// \file
/// From one unit to another.
#pragma once

#include "report/unit.h"

#include <tvtypes/units.h>

#include <string>

namespace tvtool::unit {

/// The library's factor beside the exact one, or why there is none. Throws a UnitError.
report::UnitFactor factorBetween(const std::string& from, const std::string& to,
                                 TVTypeSys::UnitTable& table);

} // namespace tvtool::unit
