/// \file
/// Checks of what flows through a connection: types, units and transformations.
#pragma once

#include "systems/connection_report.h"
#include "systems/item_index.h"
#include "systems/unit_conversion.h"

namespace tvtool::systems {

/// What was compared before: connections repeat their units and enumerations.
struct Comparisons {
    UnitConversions conversions;
    ItemIndex items;
};

/// Compares the two ends of a connection, whose direction is known. Sets the effects and the
/// conversion of the row.
void checkSignal(const ConnectionReport& report, Comparisons& comparisons);

/// Checks the transformation of a connection against the types of its ends.
void checkTransformation(const ConnectionReport& report, ItemIndex& items);

} // namespace tvtool::systems
