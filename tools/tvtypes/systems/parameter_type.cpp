#include "systems/parameter_type.h"

#include <fmt/format.h>

namespace tvtool::systems {

TargetType targetType(const End& end) {
    TargetType type{end.base, end.typeName, {}, {}, unitOf(end), end.items, {}};
    if (end.variable != nullptr && end.element->model != nullptr) {
        const fmi::Description& description = *end.element->model->description;
        type.modelBase = end.variable->base;
        type.modelTypeName = exchange::baseTypeName(type.modelBase, description.majorVersion);
        type.range = fmi::rangeOf(*end.variable, description);
    }
    return type;
}

std::string forbiddenReason(const fmi::Variable& variable, int majorVersion) {
    const fmi::Causality causality = fmi::causalityOf(variable);
    if (variable.variability == fmi::Variability::Constant) {
        return "is constant";
    }
    if (majorVersion == 1) {
        return causality == fmi::Causality::Input || variable.hasStart
                   ? ""
                   : "is no input and has no start";
    }
    if (variable.base == exchange::BaseType::Clock) {
        return ""; // no type converts to it
    }
    if (causality == fmi::Causality::Independent) {
        return "is the independent variable";
    }
    if (causality == fmi::Causality::Input ||
        fmi::initialOf(variable, majorVersion) != fmi::Initial::Calculated) {
        return "";
    }
    return variable.initial == fmi::Initial::Calculated
               ? "has initial calculated"
               : fmt::format("has no initial, which is calculated for causality {} and "
                             "variability {}",
                             fmi::causalityName(causality),
                             fmi::variabilityName(fmi::variabilityOf(variable)));
}

} // namespace tvtool::systems
