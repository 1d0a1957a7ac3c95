/// \file
/// Checks of connectors against the variables of their models.
#pragma once

#include "systems/connectors.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <string_view>

namespace tvtool::systems {

/// The names of the connectors of each element that connections refer to.
using ConnectedNames =
    boost::unordered_flat_map<const ssp::Element*, boost::unordered_flat_set<std::string_view>>;

/// Compares the connectors of a component or a reference to a dictionary with what they stand for:
/// variables of a model, connectors of a system, entries of a dictionary. Connectors that match
/// nothing are an error each if they are connected, else one finding together.
void checkConnectors(const ssp::Element& element, const ConnectedNames& connected,
                     Connectors& connectors, NameIndex& names);

} // namespace tvtool::systems
