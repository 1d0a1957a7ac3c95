/// \file
/// Search in the unit database.
#pragma once

#include <string>
#include <vector>

namespace tvtool::units {

/// A unit in a list.
struct UnitLine {
    std::string name;
    std::string symbol;
    std::string quantity;
    std::string definition;
    std::vector<std::string> systems;
};

/// A completion of a prefix.
struct UnitWord {
    std::string word;
    const char* kind = ""; ///< "name", "symbol" or "alias"
    std::string unit;      ///< name of the unit
    std::string quantity;
};

/// Returns the names, symbols and aliases that begin with a prefix, sorted.
std::vector<UnitWord> completions(const std::string& prefix);

/// Returns the units whose name, symbol, display, quantity or one of whose aliases contains the
/// word. Case is ignored.
std::vector<UnitLine> unitsWith(const std::string& word);

/// Returns the units of a system and a quantity; an empty text matches all. Throws a
/// text::ParseError for a system or a quantity without units.
std::vector<UnitLine> unitsOf(const std::string& system, const std::string& quantity);

} // namespace tvtool::units
