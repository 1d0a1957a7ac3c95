/// \file
/// Checks of what flows through a connection: types, units and transformations.
#pragma once

#include "systems/connection_report.h"
#include "systems/unit_conversion.h"

namespace tvtool::systems {

/// Compares the two ends of a connection, whose direction is known. Sets the effects and the
/// conversion of the row.
void checkSignal(const ConnectionReport& report, UnitConversions& conversions);

/// Checks the transformation of a connection against the types of its ends.
void checkTransformation(const ConnectionReport& report);

} // namespace tvtool::systems
