/// \file
/// Exact expansion of units into fundamental units.
#pragma once

#include "exact/number.h"

#include <tvtypes/units.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tvtool::units {

/// A value x of a unit is factor * x + offset in the product of fundamental units.
struct Expansion {
    std::map<std::string, std::int64_t> powers; ///< by symbol; none is 0
    exact::Number factor = 1;
    exact::Number offset = 0;
    /// A unit with an offset within a product, where its offset is ignored; null if there is none.
    const TVTypeSys::UnitBase* offsetInProduct = nullptr;
};

exact::Number exactValue(const TVTypeSys::Rational& number);

/// Returns the expansion of a unit whose expression has been parsed; empty if its factor takes some
/// thousand digits.
std::optional<Expansion> expand(const TVTypeSys::UnitBase& unit);

/// Returns the expansion of an expression of known names, or of "unitless"; empty also if the
/// library cannot represent the factor in its rational numbers.
std::optional<Expansion> expandExpression(const std::string& expression);

/// Returns a product such as kg*m^2/s^3; 1 if there are no powers.
std::string productText(const std::map<std::string, std::int64_t>& powers);

/// Conversion of a value x: factor * x + offset.
struct Conversion {
    exact::Number factor;
    exact::Number offset;

    /// Returns the formula: "5/9 * x + 45967/180".
    std::string text() const;
};

/// Returns the conversion between units of the same dimension.
Conversion conversionBetween(const Expansion& from, const Expansion& to);

} // namespace tvtool::units
