/// \file
/// The units of a model in a unit table.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"

#include <tvtypes/units.h>

#include <memory>
#include <string>
#include <vector>

namespace tvtool::model {

/// What a unit of the description has been taken for.
enum class UnitBasis {
    Name,      ///< what the library takes its name for
    Reading,   ///< what its name is read as
    BaseUnits, ///< its product of base units
    Nothing    ///< it has no place in the table
};

/// The id of what has no unit of its own, or one without a place in the table.
inline constexpr int inheritedUnit = -1;

/// Brings a model's units into a table of their own. A unit has a place there if the table can hold
/// what the description says of it, in whatever way its name is written. What the name and the
/// numbers in the description say differently is a problem.
///
/// Without units the database is left alone. If it cannot be read, no unit has a place.
class Units {
  public:
    struct Unit {
        UnitBasis basis = UnitBasis::Nothing;
        int id = inheritedUnit;
        std::string expression; ///< empty if it has no place
    };

    Units(const fmi::Description& description, fmi::Remarks& remarks);

    /// By index in Description::units.
    const std::vector<Unit>& all() const { return all_; }

    /// The id for each variable.
    const std::vector<int>& variableIds() const { return variableIds_; }

  private:
    Unit enter(const fmi::UnitDefinition& definition, fmi::Remarks& remarks);
    Unit registered(UnitBasis basis, const std::string& expression, const fmi::Place& place,
                    fmi::Remarks& remarks);

    std::unique_ptr<TVTypeSys::UnitTable> table_;
    std::vector<Unit> all_;
    std::vector<int> variableIds_;
};

} // namespace tvtool::model
