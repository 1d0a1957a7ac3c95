/// \file
/// Checks of the parameter bindings of a package.
#pragma once

#include "systems/connectors.h"
#include "systems/records.h"
#include "systems/signal_checks.h"

#include <vector>

namespace tvtool::systems {

/// Applies the bindings of all elements below the root system, and checks names, values and which
/// of several values is used. Findings are added to the files of the sets, the mappings and the
/// bindings. A system that several components share is checked in the first of them.
/// \return a row for each target of each parameter, in the order of the bindings: those of a system
///         before those of its elements
std::vector<ParameterRow> checkParameters(const ssp::Package& package, Connectors& connectors,
                                          NameIndex& names, Comparisons& comparisons);

} // namespace tvtool::systems
