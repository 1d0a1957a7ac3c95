#include "fmi/description.h"

namespace tvtool::fmi {

namespace {

// In the order of the enumerations.
constexpr std::string_view causalities[] = {
    "",       "",      "parameter",   "calculatedParameter", "input",
    "output", "local", "independent", "structuralParameter"};
constexpr std::string_view variabilities[] = {"",        "",         "constant",  "fixed",
                                              "tunable", "discrete", "continuous"};
constexpr std::string_view initials[] = {"", "", "exact", "approx", "calculated"};

} // namespace

Range rangeOf(const Variable& variable, const Description& description) {
    Range range{variable.min, variable.max, variable.nominal};
    if (variable.type != noIndex) {
        const TypeDefinition& type = description.types[variable.type];
        range.min = range.min.empty() ? type.min : range.min;
        range.max = range.max.empty() ? type.max : range.max;
        range.nominal = range.nominal.empty() ? type.nominal : range.nominal;
    }
    return range;
}

Causality causalityOf(const Variable& variable) {
    const bool isAbsent =
        variable.causality == Causality::None || variable.causality == Causality::Invalid;
    return isAbsent ? Causality::Local : variable.causality;
}

Variability variabilityOf(const Variable& variable) {
    if (variable.variability != Variability::None && variable.variability != Variability::Invalid) {
        return variable.variability;
    }
    const Causality causality = causalityOf(variable);
    if (causality == Causality::Parameter || causality == Causality::CalculatedParameter ||
        causality == Causality::StructuralParameter) {
        return Variability::Fixed;
    }
    const bool isReal = variable.base == BaseType::Float64 || variable.base == BaseType::Float32;
    return isReal ? Variability::Continuous : Variability::Discrete;
}

std::string_view causalityName(Causality causality) {
    return causalities[static_cast<std::size_t>(causality)];
}

std::string_view variabilityName(Variability variability) {
    return variabilities[static_cast<std::size_t>(variability)];
}

std::string_view initialName(Initial initial) {
    return initials[static_cast<std::size_t>(initial)];
}

} // namespace tvtool::fmi
