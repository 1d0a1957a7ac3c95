/// \file
/// Checks of what flows through a connection: types, units and transformations.
#pragma once

#include "systems/connection_report.h"

namespace tvtool::systems {

/// Compares the two ends of a connection, whose direction is known. Sets the effects and the
/// conversion of the row.
void checkSignal(const ConnectionReport& report);

/// Checks the transformation of a connection against the types of its ends.
void checkTransformation(const ConnectionReport& report);

} // namespace tvtool::systems
