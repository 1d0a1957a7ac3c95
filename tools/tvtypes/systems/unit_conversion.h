/// \file
/// Conversion between the units of two ends.
#pragma once

#include "exact/number.h"
#include "exchange/records.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace tvtool::systems {

/// The unit of a value as one file defines it.
struct UnitEnd {
    std::string_view name;                                ///< empty for no unit
    const exchange::UnitDefinition* definition = nullptr; ///< null if it is not defined
    bool isRelative = false;                              ///< whether the offset does not apply
};

enum class UnitRelation : std::uint8_t {
    None,          ///< one end has no unit
    Same,          ///< no conversion
    Converted,     ///< by factor and offset
    RadianDiffers, ///< as before, but one end has a power of rad that the other one lacks
    Undecided,     ///< a definition is missing, and the names have other meanings
    Incompatible   ///< different powers of base units
};

struct UnitConversion {
    UnitRelation relation = UnitRelation::None;
    double factor = 1; ///< target = factor * source + offset
    double offset = 0;
    std::string reason; ///< what is known of incompatible and undecided units
};

/// Returns the exact value of the decimal that a finite double was written as.
exact::Number decimalOf(double number);

/// Compares the units of a source and a target by their definitions: value2 = (factor1 * value1 +
/// offset1 - offset2) / factor2. Offsets are ignored if one of the ends is relative. Where a
/// definition is missing, compares the names, and by the unit database what they mean.
UnitConversion convertUnits(const UnitEnd& source, const UnitEnd& target);

/// Conversions between units that were looked up.
class UnitConversions {
  public:
    /// Returns what convertUnits() does.
    const UnitConversion& between(const UnitEnd& source, const UnitEnd& target);

  private:
    using Key = std::tuple<std::string_view, const void*, std::string_view, const void*, bool>;

    std::map<Key, UnitConversion> known_;
};

/// Returns "0.001 * x + 273.15", with at most 12 digits, as definitions are rounded.
std::string conversionText(const UnitConversion& conversion);

} // namespace tvtool::systems
