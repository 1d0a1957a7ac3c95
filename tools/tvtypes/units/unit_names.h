/// \file
/// Names of the units in the database.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// Returns a name, valid in an expression, of the unit whose name, symbol or alias the text is;
/// else an empty text.
std::string findUnitName(std::string_view text);

/// Returns the name of the quantity that a unit of the database measures; empty if the text is no
/// unit.
std::string quantityOfUnit(std::string_view name);

/// Returns the name of the unit whose name, symbol or alias the text is; else an empty text.
std::string fullNameOfUnit(std::string_view name);

/// Returns the names, symbols and aliases that differ from a text in case alone.
std::vector<std::string> caseVariants(std::string_view text);

} // namespace tvtool::units
