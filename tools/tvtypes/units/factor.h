/// \file
/// Factor from one unit to another.
#pragma once

#include <tvtypes/units.h>

#include <optional>
#include <string>

namespace tvtool::units {

struct UnitFactor {
    std::string from;             ///< expression
    std::string to;               ///< expression
    std::optional<double> factor; ///< of the library
    std::string exact;            ///< without rounding; empty if it is too long
    std::optional<double> exactDecimal;
    bool differs = false;   ///< whether the two differ by more than rounding
    std::string conversion; ///< formula for a value x; empty unless the zero points differ
    std::string reason;     ///< why there is no factor; empty if there is one
};

/// Returns the factor of the library and the exact one, or the reason why there is none. Throws a
/// text::ParseError.
UnitFactor factorBetween(const std::string& from, const std::string& to,
                         TVTypeSys::UnitTable& table);

} // namespace tvtool::units
