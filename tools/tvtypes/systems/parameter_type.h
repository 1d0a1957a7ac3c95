/// \file
/// What the targets of parameters take.
#pragma once

#include "systems/connectors.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvtool::systems {

/// The type of a target, with what only the model says.
struct TargetType {
    exchange::BaseType base =
        exchange::BaseType::None; ///< as the system describes it, or the model
    std::string_view typeName;
    exchange::BaseType modelBase = exchange::BaseType::None; ///< None if there is no variable
    std::string_view modelTypeName;
    UnitEnd unit;
    const std::vector<exchange::Item>* items = nullptr; ///< of an enumeration; null if not known
    fmi::Range range;
};

TargetType targetType(const End& end);

/// Returns why a variable cannot be set, as what follows "which"; empty if it can be.
std::string forbiddenReason(const fmi::Variable& variable, int majorVersion);

} // namespace tvtool::systems
