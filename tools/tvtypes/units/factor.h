/// \file
/// The factor from one unit to another.
#pragma once

#include <tvtypes/units.h>

#include <optional>
#include <string>

namespace tvtool::units {

struct UnitFactor {
    std::string from;             ///< expression
    std::string to;               ///< expression
    std::optional<double> factor; ///< the library's
    std::string exact;            ///< without rounding; empty if it is not known
    std::optional<double> exactDecimal;
    bool differs = false;   ///< whether the library's factor is not the exact one, rounded
    std::string conversion; ///< of a value x; empty unless the units have different zero points
    std::string reason;     ///< why there is no factor; empty if there is one
};

/// Returns the library's factor and the exact one, or the reason why there is none. Throws a
/// text::ParseError.
UnitFactor factorBetween(const std::string& from, const std::string& to,
                         TVTypeSys::UnitTable& table);

} // namespace tvtool::units
