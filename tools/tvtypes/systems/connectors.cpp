#include "systems/connectors.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using findings::Code;
using ssp::Kind;

const fmi::TypeDefinition* typeOf(const fmi::Variable& variable,
                                  const fmi::Description& description) {
    return variable.type == exchange::noIndex ? nullptr : &description.types[variable.type];
}

bool areSameUnits(const End& a, const End& b) {
    const UnitRelation relation = convertUnits(unitOf(a), unitOf(b)).relation;
    return relation == UnitRelation::Same || a.unit == b.unit;
}

bool areSameTypes(const End& a, const End& b) {
    return a.base == b.base && (a.typeId == b.typeId || a.items == nullptr || b.items == nullptr);
}

/// Returns the only one of the ends that have a value; null if there is none, and the first two if
/// they differ.
template <class Has, class Same>
std::pair<const End*, const End*> onlyOne(const std::vector<const End*>& ends, Has has, Same same) {
    const End* first = nullptr;
    for (const End* const end : ends) {
        if (!has(*end)) {
            continue;
        }
        if (first != nullptr && !same(*first, *end)) {
            return {first, end};
        }
        first = first == nullptr ? end : first;
    }
    return {first, nullptr};
}

std::string nameOf(const End& end) {
    return fmt::format("{}{}{}", end.elementName, end.elementName.empty() ? "" : ".",
                       end.connectorName);
}

} // namespace

UnitEnd unitOf(const End& end) { return {end.unit, end.definition, end.isRelative}; }

UnitEnd unitOf(const fmi::Variable& variable, const fmi::Description& description) {
    if (variable.unit == exchange::noIndex) {
        return {};
    }
    const exchange::UnitDefinition& unit = description.units[variable.unit];
    const fmi::TypeDefinition* const type = typeOf(variable, description);
    return {unit.name, unit.isDefined ? &unit : nullptr,
            variable.isRelative || (type != nullptr && type->isRelative)};
}

Kind kindOf(const fmi::Variable& variable) {
    switch (fmi::causalityOf(variable)) {
    case fmi::Causality::Parameter:
        return Kind::Parameter;
    case fmi::Causality::CalculatedParameter:
        return Kind::CalculatedParameter;
    case fmi::Causality::Input:
        return Kind::Input;
    case fmi::Causality::Output:
        return Kind::Output;
    case fmi::Causality::StructuralParameter:
        return Kind::StructuralParameter;
    case fmi::Causality::Local:
        return Kind::Local;
    default:
        return Kind::Unspecified;
    }
}

std::string dimensionText(const std::vector<ssp::Dimension>& dimensions) {
    std::string text;
    for (const ssp::Dimension& dimension : dimensions) {
        text += text.empty() ? "" : " x ";
        text += dimension.size                    ? fmt::format("{}", *dimension.size)
                : dimension.sizeConnector.empty() ? "?"
                                                  : std::string(dimension.sizeConnector);
    }
    return text;
}

std::vector<ssp::Dimension> dimensionsOf(const fmi::Variable& variable, const ssp::Model& model,
                                         NameIndex& names) {
    const fmi::Description& description = *model.description;
    std::vector<ssp::Dimension> dimensions;
    for (std::uint32_t i = 0; i < variable.dimensionCount; ++i) {
        const fmi::Dimension& dimension = description.dimensions[variable.firstDimension + i];
        ssp::Dimension& added = dimensions.emplace_back();
        added.place = variable.place;
        if (!dimension.isReference) {
            added.size = dimension.number;
            continue;
        }
        if (const fmi::Variable* const size = names.size(model, dimension.number)) {
            added.sizeConnector = size->name;
        }
    }
    return dimensions;
}

End Connectors::end(const ssp::Element& system, const ssp::EndReference& reference) {
    const ssp::Element* const element =
        reference.element ? names_.element(system, *reference.element) : &system;
    End end;
    if (element != nullptr) {
        end = resolve(*element, reference.connector);
    }
    end.isSystem = element == &system;
    end.elementName = reference.element.value_or("");
    end.connectorName = reference.connector;
    end.indices = reference.indices ? &*reference.indices : nullptr;
    return end;
}

const End& Connectors::resolve(const ssp::Element& owner, std::string_view name) {
    const auto [entry, isNew] = ends_[&owner].try_emplace(name);
    if (!isNew) {
        // Also while it is being resolved, for connectors that are connected in a circle.
        return *entry->second;
    }
    entry->second = std::make_unique<End>();
    End& end = *entry->second;
    end.element = &owner;
    end.elementName = owner.name;
    end.connectorName = name;
    end.connector = names_.connector(owner, name);
    if (end.connector != nullptr) {
        addConnector(end, *end.connector, owner.file->definitions);
    }
    if (owner.kind == ssp::ElementKind::System) {
        addInside(end, owner);
    } else if (owner.model != nullptr) {
        addVariable(end, *owner.model);
    } else if (owner.system != nullptr && names_.connector(*owner.system, name) != nullptr) {
        addMissing(end, resolve(*owner.system, name));
    } else if (owner.dictionary != nullptr) {
        if (const ssp::Connector* const found = names_.entry(*owner.dictionary, name)) {
            End other;
            addConnector(other, *found, owner.dictionary->definitions);
            addMissing(end, other);
        }
    }
    end.typeId = types_.id(end.base, end.items);
    end.dimensionText = dimensionText(end.dimensions);
    return end;
}

void Connectors::addConnector(End& end, const ssp::Connector& connector,
                              const ssp::Definitions& scope) {
    const ssp::Type& type = connector.type;
    end.kind = connector.kind;
    end.base = type.base;
    end.typeName = type.element;
    end.unit = type.unit;
    end.definition = type.unit.empty() ? nullptr : names_.unit(scope, type.unit);
    end.dimensions = connector.dimensions;
    if (!type.enumeration.empty()) {
        end.typeName = type.enumeration;
        if (const ssp::Enumeration* const found = names_.enumeration(scope, type.enumeration)) {
            end.items = &found->items;
        }
    }
}

void Connectors::addVariable(End& end, const ssp::Model& model) {
    const fmi::Variable* const variable = names_.variable(model, end.connectorName);
    if (variable == nullptr) {
        return;
    }
    const fmi::Description& description = *model.description;
    End other;
    other.kind = kindOf(*variable);
    other.base = variable->base;
    other.typeName = exchange::baseTypeName(variable->base, description.majorVersion);
    const UnitEnd unit = unitOf(*variable, description);
    other.unit = unit.name;
    other.definition = unit.definition;
    const fmi::TypeDefinition* const type = typeOf(*variable, description);
    if (variable->base == BaseType::Enumeration && type != nullptr) {
        other.items = &type->items;
        other.typeName = type->name;
    }
    if (end.dimensions.empty()) {
        other.dimensions = dimensionsOf(*variable, model, names_);
    }
    addMissing(end, other);
    end.variable = variable;
    end.isRelative = unit.isRelative;
}

void Connectors::addMissing(End& end, const End& other) {
    if (end.kind == Kind::None || end.kind == Kind::Invalid) {
        end.kind = other.kind;
    }
    // An enumeration without a name has the items of the other one.
    if (end.base == BaseType::None ||
        (end.base == other.base && end.items == nullptr && end.base == BaseType::Enumeration)) {
        end.base = other.base;
        end.typeName = other.typeName;
        end.items = other.items;
    }
    if (end.unit.empty()) {
        end.unit = other.unit;
        end.definition = other.definition;
    }
    if (end.dimensions.empty()) {
        end.dimensions = other.dimensions;
    }
    end.isRelative = end.isRelative || other.isRelative;
    end.variable = end.variable == nullptr ? other.variable : end.variable;
}

void Connectors::addInside(End& end, const ssp::Element& system) {
    const bool takesUnit =
        end.unit.empty() && (end.base == BaseType::None || end.base == BaseType::Float64 ||
                             end.base == BaseType::Float32);
    if (end.connector == nullptr || (end.base != BaseType::None && !takesUnit)) {
        return;
    }
    const std::vector<const End*> inside = endsInside(system, end.connectorName);
    const auto addDifference = [&](const End& first, const End& second, const char* thing,
                                   std::string_view ofFirst, std::string_view ofSecond) {
        system.file->file.findings.add(
            Code::ConnectorAmbiguous, end.connector->place,
            {findings::SubjectKind::Connector, end.connectorName},
            "connector {} of the system has no {}, and is connected with {} ({}) and {} ({})",
            text::quoted(end.connectorName), thing, text::quoted(nameOf(first)),
            text::shortened(ofFirst), text::quoted(nameOf(second)), text::shortened(ofSecond));
    };
    if (end.base == BaseType::None) {
        const auto [first, other] = onlyOne(
            inside, [](const End& e) { return e.base != BaseType::None; }, areSameTypes);
        if (other != nullptr) {
            addDifference(*first, *other, "type", first->typeName, other->typeName);
        } else if (first != nullptr) {
            end.base = first->base;
            end.typeName = first->typeName;
            end.items = first->items;
        }
    }
    const auto [first, other] = onlyOne(
        inside, [](const End& e) { return !e.unit.empty(); }, areSameUnits);
    if (takesUnit && other != nullptr) {
        addDifference(*first, *other, "unit", first->unit, other->unit);
    } else if (takesUnit && first != nullptr) {
        end.unit = first->unit;
        end.definition = first->definition;
        end.isRelative = first->isRelative;
    }
    if (end.dimensions.empty() && inside.size() == 1) {
        end.dimensions = inside.front()->dimensions;
        // The names of sizes are those of the other element.
        for (ssp::Dimension& dimension : end.dimensions) {
            dimension.sizeConnector = {};
        }
    }
}

std::vector<const End*> Connectors::endsInside(const ssp::Element& system, std::string_view name) {
    const auto [entry, isNew] = references_.try_emplace(&system);
    References& known = entry->second;
    if (isNew) {
        const auto add = [&](const ssp::EndReference& own, const ssp::EndReference& other) {
            // What is restricted to indices differs from the connector.
            if (!own.element && !own.indices && !other.indices) {
                known[own.connector].push_back(&other);
            }
        };
        for (const ssp::Connection& connection : system.connections) {
            if (!connection.suppressesUnitConversion) {
                add(connection.start, connection.end);
                add(connection.end, connection.start);
            }
        }
    }
    std::vector<const End*> ends;
    const auto references = known.find(name);
    if (references == known.end()) {
        return ends;
    }
    for (const ssp::EndReference* const reference : references->second) {
        const ssp::Element* const element =
            reference->element ? names_.element(system, *reference->element) : &system;
        if (element != nullptr) {
            ends.push_back(&resolve(*element, reference->connector));
        }
    }
    return ends;
}

} // namespace tvtool::systems
