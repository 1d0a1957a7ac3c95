#include "systems/name_index.h"

namespace tvtool::systems {

namespace {

/// Returns the record with the name. The names of an owner are collected at the first call.
template <class Map, class Owner, class Name, class Collect>
auto find(Map& map, const Owner& owner, Name name, Collect collect) {
    const auto [entry, isNew] = map.try_emplace(&owner);
    auto& names = entry->second;
    if (isNew) {
        collect(names);
    }
    const auto found = names.find(name);
    return found == names.end() ? nullptr : found->second;
}

template <class Map, class Owner, class Records>
auto findIn(Map& map, const Owner& owner, std::string_view name, const Records& records) {
    return find(map, owner, name, [&](auto& names) {
        for (const auto& record : records) {
            names.emplace(record.name, &record);
        }
    });
}

} // namespace

const ssp::Element* NameIndex::element(const ssp::Element& system, std::string_view name) {
    return find(elements_, system, name, [&](auto& names) {
        for (const ssp::Element* const element : system.elements) {
            names.emplace(element->name, element);
        }
    });
}

const ssp::Connector* NameIndex::connector(const ssp::Element& owner, std::string_view name) {
    return findIn(connectors_, owner, name, owner.connectors);
}

const ssp::Connector* NameIndex::entry(const ssp::SignalDictionary& dictionary,
                                       std::string_view name) {
    return findIn(entries_, dictionary, name, dictionary.entries);
}

const fmi::Variable* NameIndex::variable(const ssp::Model& model, std::string_view name) {
    return find(variables_, model, name, [&](auto& names) {
        const fmi::Description& description = *model.description;
        for (const fmi::Variable& variable : description.variables) {
            names.emplace(variable.name, &variable);
        }
        for (const fmi::Alias& alias : description.aliases) {
            names.emplace(alias.name, &description.variables[alias.variable]);
        }
    });
}

const fmi::Variable* NameIndex::size(const ssp::Model& model, std::uint64_t valueReference) {
    return find(sizes_, model, valueReference, [&](auto& sizes) {
        for (const fmi::Variable& variable : model.description->variables) {
            if (variable.isSize) {
                sizes.emplace(variable.valueReference, &variable);
            }
        }
    });
}

const exchange::UnitDefinition* NameIndex::unit(const ssp::Definitions& scope,
                                                std::string_view name) {
    return findIn(units_, scope, name, scope.units);
}

const ssp::Enumeration* NameIndex::enumeration(const ssp::Definitions& scope,
                                               std::string_view name) {
    return findIn(enumerations_, scope, name, scope.enumerations);
}

} // namespace tvtool::systems
