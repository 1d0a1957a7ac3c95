/// \file
/// All about one unit.
#pragma once

#include "units/records.h"

#include <tvtypes/units.h>

#include <string>

namespace tvtool::units {

/// Throws a text::ParseError.
units::UnitSheet sheetOf(const std::string& text, TVTypeSys::UnitTable& table);

} // namespace tvtool::units
