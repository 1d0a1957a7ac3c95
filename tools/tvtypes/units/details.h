/// \file
/// Details of a unit, and the factor between two units.
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
    std::string name;       ///< composed for a product, as are symbol and display
    std::string symbol;
    std::string display;
    std::vector<std::string> aliases;
    std::string definition; ///< by other units: "0.3048 * m"; empty for a product
    std::string quantity;   ///< empty if it has none
    std::string canonical;
    std::string base;   ///< product of fundamental units
    std::string factor; ///< exact factor to `base`; empty if it is too long
    std::optional<double> factorDecimal;
    std::string conversion; ///< formula for a value x in `base`; empty without an offset
    std::vector<std::string> systems;
    std::vector<std::string> convertible; ///< those nearest in size that the unit converts to
    std::size_t convertibleCount = 0;     ///< number of all units that it converts to
    std::vector<std::string> notes;
};

/// Registers a unit in the table and returns its details. Throws a text::ParseError.
UnitDetails unitDetails(const std::string& text, TVTypeSys::UnitTable& table);

struct UnitFactor {
    std::string from;             ///< expression
    std::string to;               ///< expression
    std::optional<double> factor; ///< of the library
    std::string exact;            ///< without rounding; empty if it is too long
    std::optional<double> exactDecimal;
    bool differs = false;   ///< whether the two differ by more than rounding
    std::string conversion; ///< formula for a value x; empty unless the zero points differ
    std::string reason;     ///< why there is no factor; empty if there is one
};

/// Returns the factor of the library and the exact one, or the reason why there is none. Throws a
/// text::ParseError.
UnitFactor factorBetween(const std::string& from, const std::string& to,
                         TVTypeSys::UnitTable& table);

} // namespace tvtool::units
