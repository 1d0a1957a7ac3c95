/// \file
/// Lookup of elements, connectors, variables and definitions by name.
#pragma once

#include "ssp/records.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <string_view>

namespace tvtool::systems {

/// Finds records of a package by name; of equal names the first one. The package does not change
/// while it is used. Each function returns null if there is none.
class NameIndex {
  public:
    const ssp::Element* element(const ssp::Element& system, std::string_view name);
    const ssp::Connector* connector(const ssp::Element& owner, std::string_view name);
    const ssp::Connector* entry(const ssp::SignalDictionary& dictionary, std::string_view name);
    /// Also finds variables by their aliases.
    const fmi::Variable* variable(const ssp::Model& model, std::string_view name);
    /// Finds the variable with the size of a dimension by its value reference.
    const fmi::Variable* size(const ssp::Model& model, std::uint64_t valueReference);
    const exchange::UnitDefinition* unit(const ssp::Definitions& scope, std::string_view name);
    const ssp::Enumeration* enumeration(const ssp::Definitions& scope, std::string_view name);

  private:
    template <class Record>
    using ByName = boost::unordered_flat_map<std::string_view, const Record*>;
    template <class Owner, class Record>
    using ByOwner = boost::unordered_flat_map<const Owner*, ByName<Record>>;

    ByOwner<ssp::Element, ssp::Element> elements_;
    ByOwner<ssp::Element, ssp::Connector> connectors_;
    ByOwner<ssp::SignalDictionary, ssp::Connector> entries_;
    ByOwner<ssp::Model, fmi::Variable> variables_;
    boost::unordered_flat_map<const ssp::Model*,
                              boost::unordered_flat_map<std::uint64_t, const fmi::Variable*>>
        sizes_;
    ByOwner<ssp::Definitions, exchange::UnitDefinition> units_;
    ByOwner<ssp::Definitions, ssp::Enumeration> enumerations_;
};

} // namespace tvtool::systems
