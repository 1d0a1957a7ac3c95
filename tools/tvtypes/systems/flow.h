/// \file
/// Direction of the flow between two connectors.
#pragma once

#include "ssp/records.h"

#include <string>

namespace tvtool::systems {

/// What decides the direction: who has the connector, and its kind.
struct FlowEnd {
    bool isSystem = false; ///< whether the connector is that of the enclosing system
    ssp::Kind kind = ssp::Kind::Unspecified;

    bool operator==(const FlowEnd&) const = default;
};

enum class Flow : std::uint8_t { Forward, Backward, Forbidden };

/// Returns the direction of a connection, whichever of its ends is the start. Kinds that are
/// missing, invalid or unspecified are any kind; where both directions are then possible, the flow
/// is forward. Forbidden if the standard allows neither direction.
Flow flowBetween(FlowEnd start, FlowEnd end);

/// Returns whether a connector of this kind takes the value of one connection at most.
bool takesOneInflow(FlowEnd target);

/// Returns "an output of an element" or "an input of the system".
std::string flowEndText(FlowEnd end);

} // namespace tvtool::systems
