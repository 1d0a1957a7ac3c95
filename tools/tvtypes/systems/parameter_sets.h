/// \file
/// Checks of parameter sets and mappings by themselves.
#pragma once

#include "systems/parameter_check.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::systems {

/// The parameters of a set, each name once.
struct ParameterSetContent {
    std::unordered_map<std::string_view, std::size_t> byName; ///< in ParameterSet::parameters
    std::vector<std::vector<findings::Code>> codes;           ///< of the findings about each
};

/// Checks the values of all parameters of a set against their own types, and that their names
/// differ.
ParameterSetContent checkSet(const ssp::ParameterSet& set, ParameterTables& tables);

/// Checks that the targets of a mapping differ.
void checkMapping(const ssp::ParameterMapping& mapping);

} // namespace tvtool::systems
