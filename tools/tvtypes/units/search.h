/// \file
/// Units of the database, looked for.
#pragma once

#include "units/records.h"

#include <string>
#include <vector>

namespace tvtool::units {

/// The names, symbols and aliases that begin with a prefix, sorted.
std::vector<units::UnitWord> completions(const std::string& prefix);

/// The units of which the word stands in the name, the symbol, an alias, the quantity or the way in
/// which they are shown. Upper and lower case are the same.
std::vector<units::UnitLine> unitsWith(const std::string& word);

/// The units of a system that measure a quantity; without either, all. Throws a text::ParseError
/// for a system or a quantity that there is none of.
std::vector<units::UnitLine> unitsOf(const std::string& system, const std::string& quantity);

} // namespace tvtool::units
