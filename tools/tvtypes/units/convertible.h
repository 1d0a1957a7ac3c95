/// \file
/// The units that a unit converts to.
#pragma once

#include "units/found.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::units {

/// A unit that another one converts to.
struct ConvertibleUnit {
    std::string name;
    std::string symbol;
    std::optional<double> factor; ///< of a value, rounded; empty if the zero points differ
    std::string exact;            ///< the factor without rounding; empty for a measured one
    std::string conversion;       ///< formula for a value x; empty unless the zero points differ
    std::string text;             ///< "3600000 J", "about 860.421 kcal" or "x + 273.15 K"
};

struct ConvertibleUnits {
    std::vector<ConvertibleUnit> units;
    std::size_t count = 0; ///< number of all
};

/// Returns at most `most` of the units that the library converts a unit to: the coherent SI unit,
/// the other common units of the quantity, and those nearest in size. \pre The unit has an
/// expansion.
ConvertibleUnits convertibleUnits(const FoundUnit& found, std::size_t most);

} // namespace tvtool::units
