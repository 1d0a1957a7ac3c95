/// \file
/// Check of a parameter at one of its targets.
#pragma once

#include "systems/item_index.h"
#include "systems/parameter_names.h"
#include "systems/parameter_type.h"
#include "systems/parameter_value.h"
#include "systems/records.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

namespace tvtool::systems {

/// A parameter at one of its targets, as one binding sets it.
struct Assignment {
    const ssp::ParameterSet* set = nullptr;
    const ssp::Parameter* parameter = nullptr;
    const ssp::ParameterMapping* mapping = nullptr; ///< null if there is none
    const ssp::MappingEntry* entry = nullptr;
    const ssp::ParameterBinding* binding = nullptr;
    std::uint32_t level = 0; ///< of the element with the binding; 0 for the root system
    ParameterTarget target;
};

/// The sizes of the dimensions of a target, where they are known.
using TargetSizes = std::vector<std::optional<std::uint64_t>>;

/// What the checks of all parameters share.
struct ParameterTables {
    NameIndex& names;
    UnitConversions& conversions;
    ItemIndex& items;
};

/// Checks whether the target can be set, and the type, the unit and the dimensions of the
/// parameter. Unless one of them is wrong, also checks its values. Adds the findings to the file of
/// the set or, about the mapping entry, to that of the mapping, and completes the row.
/// \param end the target
/// \param sizes of the target; empty if they are not known
/// \param isValid whether the values of the parameter are of its own type
void checkAssignment(const Assignment& assignment, const End& end,
                     const std::optional<TargetSizes>& sizes, bool isValid, ParameterTables& tables,
                     ParameterRow& row);

} // namespace tvtool::systems
