/// \file
/// Units in a table, and texts about them.
#pragma once

#include "units/expansion.h"
#include "units/reading.h"

#include <tvtypes/units.h>

#include <optional>
#include <string>
#include <vector>

namespace tvtool::units {

struct FoundUnit {
    Reading reading;
    const TVTypeSys::UnitBase* unit = nullptr; ///< owned by the table
    bool isNamed = false; ///< whether it is in the database; the library composes names of others
    std::optional<Expansion> expansion; ///< with the numbers in the text; empty if it is too long

    /// Returns the name in the database, else the expression.
    std::string label() const;
};

/// Registers the unit of a text in a table. Throws a text::ParseError, with suggestions for an
/// unknown name.
FoundUnit findUnit(const std::string& text, TVTypeSys::UnitTable& table);

/// Returns the name of the quantity that a unit measures; empty if it has none.
std::string quantityName(const TVTypeSys::UnitBase& unit);

/// Returns the definition of a unit by other units: "0.3048 * m".
std::string definitionText(const TVTypeSys::UnitBase& unit);

/// Returns the names of the unit systems with a unit.
std::vector<std::string> systemNames(const TVTypeSys::UnitBase& unit);

/// Returns the canonical form of a unit as the library displays it; empty without dimension.
std::string canonicalForm(const TVTypeSys::UnitBase& unit);

} // namespace tvtool::units
