/// \file
/// What is to be said of units: the records from which every form of it is printed.
///
/// Texts are as they were given or as the database has them; whoever prints them makes them safe to
/// show.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::units {

/// All about one unit.
struct UnitSheet {
    std::string text;       ///< as it was asked for
    std::string expression; ///< as the library takes it
    std::string name;       ///< composed for a product, as are symbol and display
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
    std::vector<std::string> convertible; ///< to the nearest of these units
    std::size_t convertibleCount = 0;     ///< how many there are in all
    std::vector<std::string> notes;
};

/// How values of one unit become those of another.
struct UnitFactor {
    std::string from; ///< expressions
    std::string to;
    std::optional<double> factor; ///< what the library gives
    std::string exact;            ///< the same without loss; empty if it is not known
    std::optional<double> exactDecimal;
    bool differs = false;   ///< whether the library's factor is not the exact one, rounded
    std::string conversion; ///< of a value x; empty unless an offset is in the way
    std::string reason;     ///< why there is no factor; empty if there is one
};

/// A unit in a list.
struct UnitLine {
    std::string name;
    std::string symbol;
    std::string quantity;
    std::string definition;
    std::vector<std::string> systems;
};

/// A word that completes another.
struct UnitWord {
    std::string word;
    const char* kind = ""; ///< "name", "symbol" or "alias"
    std::string unit;      ///< the name of what it stands for
};

} // namespace tvtool::units
