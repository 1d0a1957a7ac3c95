/// \file
/// Lookup of the names in a text in the unit database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

struct UnitPower {
    std::string name; ///< valid in an expression
    std::int64_t power = 1;
};

/// Returns whether the library accepts a text as an expression. It does not accept "unitless".
bool isExpression(std::string_view text);

/// Returns a name, valid in an expression, of the unit whose name, symbol or alias the text is;
/// else an empty text.
std::string findUnitName(std::string_view text);

/// Resolves a name without operators: a name in the database; one followed by a power, as m2; or a
/// product of common symbols, as Nm, if there is only one such product. A power at the end of a
/// product applies to its last part. Empty if the name is unknown.
std::vector<UnitPower> resolveName(std::string_view text);

} // namespace tvtool::units
