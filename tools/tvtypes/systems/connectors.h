/// \file
/// What the connectors of a package carry.
#pragma once

#include "systems/name_index.h"
#include "systems/records.h"
#include "systems/type_table.h"
#include "systems/unit_conversion.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <deque>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::systems {

/// Returns the unit of an end for a conversion.
UnitEnd unitOf(const End& end);

/// Returns the unit of a variable of a model, with a null definition if the model does not define
/// it.
UnitEnd unitOf(const fmi::Variable& variable, const fmi::Description& description);

/// Returns the kind of a connector for a variable; Unspecified for an independent variable.
ssp::Kind kindOf(const fmi::Variable& variable);

/// Returns "3 x n"; empty for a scalar.
std::string dimensionText(const std::vector<ssp::Dimension>& dimensions);

/// Returns the dimensions of a variable; those that refer to another variable have its name.
std::vector<ssp::Dimension> dimensionsOf(const fmi::Variable& variable, const ssp::Model& model,
                                         NameIndex& names);

/// Resolves connectors: type, unit, items and dimensions are those of the connector, else of the
/// variable of the model or the entry of the dictionary. Those of a system's own connector are, if
/// they are missing, those of what it is connected with inside; if these differ, that is a finding.
class Connectors {
  public:
    explicit Connectors(NameIndex& names, TypeTable& types) : names_(names), types_(types) {}

    /// Resolves one end of a connection of a system.
    End end(const ssp::Element& system, const ssp::EndReference& reference);

    /// Resolves a connector of an element, which need not be declared.
    const End& resolve(const ssp::Element& owner, std::string_view name);

  private:
    void addConnector(End& end, const ssp::Connector& connector, const ssp::Definitions& scope);
    void addVariable(End& end, const ssp::Model& model);
    void addInside(End& end, const ssp::Element& system);
    /// Takes from another end what this one lacks.
    static void addMissing(End& end, const End& other);
    std::vector<const End*> endsInside(const ssp::Element& system, std::string_view name);

    using Ends = boost::unordered_flat_map<std::string_view, std::unique_ptr<End>>;
    using References = std::unordered_map<std::string_view, std::vector<const ssp::EndReference*>>;

    NameIndex& names_;
    TypeTable& types_;
    boost::unordered_flat_map<const ssp::Element*, Ends> ends_;
    /// What each connector of a system is connected with inside.
    std::unordered_map<const ssp::Element*, References> references_;
};

} // namespace tvtool::systems
