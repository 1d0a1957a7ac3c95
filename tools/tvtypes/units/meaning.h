/// \file
/// What a unit is in fundamental units, computed without loss.
#pragma once

#include "exact/number.h"

#include <tvtypes/units.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tvtool::units {

/// A value x is factor * x + offset in the product of fundamental units.
struct Meaning {
    std::map<std::string, std::int64_t> powers; ///< by symbol; none is 0
    exact::Number factor = 1;
    exact::Number offset = 0;
    /// A unit with an offset that stands in a product. Its offset counts for nothing there.
    const TVTypeSys::UnitBase* offsetInProduct = nullptr;
};

exact::Number exactOf(const TVTypeSys::Rational& number);

/// The meaning of a unit whose expression has been read. Empty if its factor takes some thousand
/// digits.
std::optional<Meaning> meaningOf(const TVTypeSys::UnitBase& unit);

/// The same for an expression of known names, or "unitless". Empty also where the library cannot
/// hold the factor in its rational numbers.
std::optional<Meaning> meaningOfExpression(const std::string& expression);

/// kg*m^2/s^3; 1 if there are no powers.
std::string productText(const std::map<std::string, std::int64_t>& powers);

/// What values of a unit are in another of the same dimension: "5/9 * x + 45967/180".
struct Conversion {
    exact::Number factor;
    exact::Number offset;
};
Conversion conversionBetween(const Meaning& from, const Meaning& to);
std::string conversionText(const Conversion& conversion);

} // namespace tvtool::units
