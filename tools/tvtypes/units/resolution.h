/// \file
/// Names in a text as names in the database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

struct KnownName {
    std::string name; ///< as it can stand in an expression
    std::int64_t power = 1;
};

/// Whether an expression is one for the library. Not for "unitless".
bool isExpression(std::string_view text);

/// A name in an expression for what the text is a name, symbol or alias of; empty if there is none.
std::string nameOfUnit(std::string_view text);

/// What a name without signs may be made of: a name of the database; one with a power behind it, as
/// m2; or a product of common symbols, as Nm, if it is so in just one way. Empty if it is none. A
/// power behind such a product belongs to its last part.
std::vector<KnownName> resolveName(std::string_view text);

} // namespace tvtool::units
