/// \file
/// The details of one unit.
#pragma once

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
    std::string name;       ///< composed for a product, like symbol and display
    std::string symbol;
    std::string display;
    std::vector<std::string> aliases;
    std::string definition; ///< in other units: "0.3048 * m"; empty for a product
    std::string quantity;   ///< empty if it has none
    std::string canonical;
    std::string base;   ///< the product of fundamental units
    std::string factor; ///< to that product, exactly; empty if it is too long
    std::optional<double> factorDecimal;
    std::string conversion; ///< of a value x to that product; empty without an offset
    std::vector<std::string> systems;
    std::vector<std::string> convertible; ///< the nearest units that the unit converts to
    std::size_t convertibleCount = 0;     ///< the number of all units that it converts to
    std::vector<std::string> notes;
};

/// Registers a unit in the table and returns its details. Throws a text::ParseError.
UnitDetails unitDetails(const std::string& text, TVTypeSys::UnitTable& table);

} // namespace tvtool::units
