/// \file
/// Exact expansion of units into fundamental units.
#pragma once

#include "exact/number.h"

#include <tvtypes/units.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

namespace tvtool::units {

/// A measured constant in a factor.
struct MeasuredPower {
    std::int64_t power = 0;
    double uncertainty = 0; ///< relative standard uncertainty of the constant
};

/// A value x of a unit is factor * x + offset in the product of fundamental units.
struct Expansion {
    std::map<std::string, std::int64_t> powers; ///< by symbol; none is 0
    exact::Number factor = 1;                   ///< with exact::pi() for pi
    exact::Number offset = 0;
    /// A unit with an offset within a product, where its offset is ignored; null if there is none.
    const TVTypeSys::UnitBase* offsetInProduct = nullptr;
    std::int64_t piPower = 0; ///< the power of pi in the factor
    /// By the digits of the constant without factors of 2 and 5: so the multiples of a unit, and
    /// units of which one is half the other, have the same constant.
    std::map<std::string, MeasuredPower> measured = {};
};

exact::Number exactValue(const TVTypeSys::Rational& number);

/// Expands units, with the definitions in the database file. Units share their parts, so an object
/// keeps all expansions; the units must not be destroyed before it.
class Expander {
  public:
    /// Returns the expansion of a unit whose expression has been parsed; empty if its factor takes
    /// some thousand digits.
    const std::optional<Expansion>& expand(const TVTypeSys::UnitBase& unit);

  private:
    std::optional<Expansion> compute(const TVTypeSys::UnitBase& unit);
    bool multiply(Expansion& expansion, const TVTypeSys::UnitBase& term, std::int64_t power,
                  bool isAlone);

    std::unordered_map<const TVTypeSys::UnitBase*, std::optional<Expansion>> known_;
};

/// Same for one unit.
std::optional<Expansion> expand(const TVTypeSys::UnitBase& unit);

/// Returns the expansion of an expression of known names, or of "unitless"; empty also if the
/// library cannot represent the factor in its rational numbers.
std::optional<Expansion> expandExpression(const std::string& expression);

/// Returns a product such as kg*m^2/s^3; 1 if there are no powers.
std::string productText(const std::map<std::string, std::int64_t>& powers);

/// Conversion of a value x: factor * x + offset.
struct Conversion {
    exact::Number factor = 1;
    exact::Number offset = 0; ///< 0 if the factor contains pi or is measured
    std::int64_t piPower = 0; ///< the power of pi in the factor
    double uncertainty = 0;   ///< relative standard uncertainty of the factor

    /// Returns the formula: "5/9 * x + 45967/180".
    std::string text() const;
};

/// Returns the conversion between units of the same dimension.
Conversion conversionBetween(const Expansion& from, const Expansion& to);

} // namespace tvtool::units
