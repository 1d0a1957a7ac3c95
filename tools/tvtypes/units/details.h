/// \file
/// Details of a unit.
#pragma once

#include "units/convertible.h"
#include "units/shown_number.h"

#include <tvtypes/units.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::units {

/// Texts are as given or as in the database; they are not safe to print.
struct UnitDetails {
    std::string text;       ///< as given
    std::string expression; ///< in the library's grammar
    std::string name;       ///< composed for a product, as are symbol and display
    std::string symbol;
    std::string display;
    std::vector<std::string> aliases;
    std::string definition; ///< by other units: "0.3048 * m"; empty for a product
    std::string quantity;   ///< empty if it has none
    std::string canonical;
    std::string base;                    ///< product of fundamental units
    std::optional<ShownNumber> factor;   ///< to `base`; empty if it is too long
    std::optional<double> libraryFactor; ///< that of the library; empty if the unit has a number
    std::string conversion; ///< formula for a value x in `base`; empty without an offset
    std::vector<std::string> systems;
    std::vector<ConvertibleUnit> convertible; ///< the most common ones that the unit converts to
    std::size_t convertibleCount = 0;         ///< number of all units that it converts to
    std::vector<std::string> notes;           ///< how the text was read
    std::string libraryNote;                  ///< how libraryFactor differs; empty if it does not
};

/// Registers a unit in the table and returns its details. Throws a text::ParseError.
UnitDetails unitDetails(const std::string& text, TVTypeSys::UnitTable& table);

} // namespace tvtool::units
