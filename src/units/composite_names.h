/// \file
/// Names of composite units.
#pragma once

#include <string>

namespace TVTypeSys {

class ResolvedNames;

/// Name, symbol and display text of a unit that is defined by an expression.
struct CompositeNames {
    std::u16string name;
    std::u16string symbol;
    std::string display;
};

/// Replaces each token of the expression that denotes exactly one unit by the name, the symbol and
/// the display text of that unit; other tokens stay. A missing symbol falls back to the name, a
/// missing display text to the symbol. Tokens are separated by parentheses and operators, so blanks
/// are part of a token: `m ` in `m / s` denotes no unit and stays as it is.
CompositeNames compositeNames(ResolvedNames& names, const std::u16string& expression);

} // namespace TVTypeSys
