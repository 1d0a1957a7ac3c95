/// \file
/// The units of a model in a unit table.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "units/expansion.h"

#include <tvtypes/units.h>

#include <memory>
#include <string>
#include <vector>

namespace tvtool::model {

/// The id of elements without a unit in the table.
inline constexpr int inheritedUnit = -1;

/// Registers the units of one file or several in a table: by their names, in all usual spellings,
/// else by their base units if the factor is 1 and the offset 0. A name that disagrees with the
/// numbers in the description in all its meanings is a problem.
///
/// The unit database is loaded only if the description has units. If it cannot be read, no unit is
/// in the table.
class Units {
  public:
    struct Unit {
        int id = inheritedUnit; ///< inheritedUnit if it is not in the table
        std::string expression;
        /// Of the expression: "name" if that is an expression of the library, "reading" if it was
        /// rewritten as one, or "base units". Empty if it is not in the table.
        const char* source = "";
    };

    Units() = default;
    /// The units of a model.
    Units(const fmi::Description& description, findings::Findings& findings) {
        add(description.units, findings);
    }

    /// Registers the units of a file, and checks their definitions.
    void add(const std::vector<exchange::UnitDefinition>& definitions,
             findings::Findings& findings);

    /// Returns the units in the order in which they were added, for a model by index in
    /// Description::units.
    const std::vector<Unit>& all() const { return all_; }

    /// Returns the unit id of a variable.
    int variableId(const fmi::Variable& variable) const {
        return variable.unit == exchange::noIndex ? inheritedUnit : all_[variable.unit].id;
    }

  private:
    Unit add(const exchange::UnitDefinition& definition, findings::Findings& findings);
    Unit registerUnit(const std::string& expression, const char* source,
                      const exchange::UnitDefinition& definition, findings::Findings& findings);

    /// Notes a difference between the factor of the library and the exact one.
    void checkFactor(const Unit& unit, const units::Expansion& meaning,
                     const exchange::UnitDefinition& definition,
                     findings::Findings& findings) const;

    std::unique_ptr<TVTypeSys::UnitTable> table_;
    std::vector<Unit> all_;
};

} // namespace tvtool::model
