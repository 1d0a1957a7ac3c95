/// \file
/// Checks of the connections between structs.
#pragma once

#include "systems/records.h"
#include "systems/struct_types.h"

#include <vector>

namespace tvtool::systems {

/// Groups the connections between elements of structs by the two structs. Groups of at least two
/// are rows. Findings are about elements that are exchanged, and about those that are not connected
/// while most are.
std::vector<StructRow> checkStructs(std::vector<ConnectionRow>& connections, StructTypes& types);

} // namespace tvtool::systems
