// Checks of the references between variables.
#include "fmi/description_checks.h"
#include "fmi/variable_finder.h"
#include "text/quote.h"

#include <unordered_set>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using findings::Subject;
using findings::SubjectKind;
using text::quoted;

std::string_view attributeOf(ReferenceKind kind) {
    constexpr std::string_view names[] = {"derivative", "previous", "clocks"};
    return names[static_cast<std::size_t>(kind)];
}

Subject subjectOf(const Variable& variable) { return {SubjectKind::Variable, variable.name}; }

void checkReference(const Reference& reference, const VariableFinder& variables,
                    const Description& description, Findings& findings) {
    const Variable& variable = description.variables[reference.variable];
    const std::string_view attribute = attributeOf(reference.kind);
    const std::uint32_t target = variables.find(reference.target);
    if (!variables.exists(reference.target)) {
        findings.addWithCause(Code::ReferenceUndefined, variable.place, subjectOf(variable),
                              attribute, "{} of variable {} is {}, which no variable has",
                              attribute, quoted(variable.name), variables.text(reference.target));
    } else if (target == reference.variable) {
        findings.addWithCause(Code::ReferenceSelf, variable.place, subjectOf(variable), attribute,
                              "{} of variable {} is the variable itself", attribute,
                              quoted(variable.name));
    } else if (target == noIndex) {
        return; // an alias or a variable without a name
    } else if (const BaseType base = description.variables[target].base;
               reference.kind == ReferenceKind::Derivative && base != BaseType::Float64 &&
               base != BaseType::Float32) {
        findings.add(Code::DerivativeType, variable.place, subjectOf(variable),
                     "derivative of variable {} has {}, which is no floating-point number",
                     quoted(variable.name), quoted(description.variables[target].name));
    } else if (reference.kind == ReferenceKind::Clock && base != BaseType::Clock) {
        findings.add(Code::ClockType, variable.place, subjectOf(variable),
                     "clocks of variable {} has {}, which is no Clock", quoted(variable.name),
                     quoted(description.variables[target].name));
    }
}

/// A structural parameter is a scalar, and above 0 if it is the size of a dimension.
void checkStructuralParameters(const Description& description, Findings& findings) {
    std::unordered_set<std::uint64_t> sizes;
    for (const Dimension& dimension : description.dimensions) {
        if (dimension.isReference) {
            sizes.insert(dimension.number);
        }
    }
    for (const Variable& variable : description.variables) {
        const bool isArray = variable.dimensionCount > 0 || variable.hasBadDimension;
        if (isArray && variable.causality == Causality::StructuralParameter) {
            findings.add(Code::StructuralDimension, variable.place, subjectOf(variable),
                         "structural parameter {} has a dimension", quoted(variable.name));
        }
        if (!variable.isSize || !sizes.contains(variable.valueReference)) {
            continue;
        }
        const auto size = description.sizes.find(variable.valueReference);
        if (size != description.sizes.end() && size->second == 0) {
            findings.add(Code::DimensionZero, variable.place, subjectOf(variable),
                         "variable {} is the size of a dimension and has start 0",
                         quoted(variable.name));
        }
    }
}

} // namespace

void checkReferences(const Description& description, Findings& findings) {
    if (!description.references.empty()) {
        const VariableFinder variables(description);
        for (const Reference& reference : description.references) {
            checkReference(reference, variables, description, findings);
        }
    }
    checkStructuralParameters(description, findings);
}

} // namespace tvtool::fmi
