/// \file
/// What an expression of units is called.
#pragma once

#include <string>

namespace TVTypeSys {

class UnitDatabase;

/// An expression with the names in it put in the place of what means a unit.
struct CompositeTexts {
    std::u16string name;
    std::u16string symbol;
    std::string display;
};

/// What stands between the operators and parentheses is replaced where it means exactly one unit:
/// by the unit's name, by its symbol, by its display text. Where a unit has no symbol its name
/// stands for it, and where it has no display text its symbol.
CompositeTexts compositeTexts(const UnitDatabase& database, const std::u16string& expression);

} // namespace TVTypeSys
