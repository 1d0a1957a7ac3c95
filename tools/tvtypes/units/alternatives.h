/// \file
/// Names with several meanings.
#pragma once

#include "exact/number.h"
#include "units/reading.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// Another reading of a text, in which one name has another meaning.
struct Alternative {
    Reading reading;
    exact::Number offset = 0; ///< of the unit, in coherent SI units
    std::string name;         ///< the name, or the whole text
    std::string usualMeaning; ///< what the name means in the database; empty if it has none
};

/// Returns the other readings of a text. The number is limited, and texts that are too long for a
/// usual unit have none.
std::vector<Alternative> alternativeReadings(std::string_view text);

} // namespace tvtool::units
