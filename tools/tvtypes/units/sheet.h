/// \file
/// All about one unit.
#pragma once

#include "report/unit.h"

#include <tvtypes/units.h>

#include <string>

namespace tvtool::unit {

/// Throws a UnitError.
report::UnitSheet sheetOf(const std::string& text, TVTypeSys::UnitTable& table);

} // namespace tvtool::unit
