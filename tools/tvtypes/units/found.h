/// \file
/// A text as a unit of the library.
#pragma once

#include "text/parse_error.h"
#include "units/meaning.h"
#include "units/reading.h"

#include <tvtypes/units.h>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::units {

struct FoundUnit {
    std::string text;
    Reading reading;
    const TVTypeSys::UnitBase* unit = nullptr; ///< owned by the table
    bool isNamed = false; ///< whether it is one of the database; the library composes other names
    std::optional<Meaning> meaning; ///< with the numbers in the text; empty if it is too long

    /// The name in the database, else the expression.
    std::string label() const;
};

/// Enters what a text is read as into a table. Throws a text::ParseError, with suggestions for a
/// name that is not known.
FoundUnit findUnit(const std::string& text, TVTypeSys::UnitTable& table);

/// What a unit measures; empty if that is not specified.
std::string quantityOf(const TVTypeSys::UnitBase& unit);

/// A unit in those of its expression: "0.3048 * m".
std::string definitionOf(const TVTypeSys::UnitBase& unit);

/// The names of the unit systems that it belongs to.
std::vector<std::string> systemsOf(const TVTypeSys::UnitBase& unit);

/// "did you mean a, b?" for what comes near a word, else empty.
std::string askFor(const std::string& word, const std::vector<std::string>& words);

} // namespace tvtool::units
