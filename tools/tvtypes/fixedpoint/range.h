/// \file
/// The real-world values of a fixed-point type.
#pragma once

#include "exact/number.h"

#include <tvtypes/fixedpoint.h>

#include <optional>
#include <string>

namespace tvtool::fixedpoint {

/// The stored integers of a type, and the values slope * integer + bias that they stand for.
struct Grid {
    exact::Integer least;
    exact::Integer greatest;
    exact::Number slope;
    exact::Number bias;

    exact::Number valueOf(const exact::Integer& stored) const { return slope * stored + bias; }
};

/// Up to these, in words and in exponents of either sign, numbers are computed.
constexpr int mostBits = 4096;

/// Empty for a type without stored integers, with an open signedness, or beyond mostBits.
std::optional<Grid> gridOf(const fxpDataTypeProp& record);

/// The slope, of an exponent within mostBits.
exact::Number exactSlopeOf(const fxpDataTypeProp& record);

/// The slope in its parts: 1.5 * 2^-4, or 2^-4.
std::string slopeFormula(const fxpDataTypeProp& record);

/// The real-world values of a type as texts: exact decimals, "about" and a rounded one, or formulas
/// where the numbers are too large for either. Empty for an open signedness.
struct Range {
    std::string lowest;
    std::string highest;
    std::string resolution; ///< the distance of neighbours

    /// Returns "lowest to highest", or an empty text.
    std::string text() const;
};

Range rangeOf(const fxpDataTypeProp& record);

} // namespace tvtool::fixedpoint
