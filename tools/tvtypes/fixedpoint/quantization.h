/// \file
/// Real-world values of a fixed-point type, and quantization of numbers to its stored integers.
#pragma once

#include "exact/number.h"

#include <tvtypes/fixedpoint.h>

#include <optional>
#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// The stored integers of a type, and the values slope * integer + bias that they represent.
struct Grid {
    exact::Integer least;
    exact::Integer greatest;
    exact::Number slope;
    exact::Number bias;

    exact::Number value(const exact::Integer& stored) const { return slope * stored + bias; }
};

/// The largest word length, and the largest magnitude of an exponent, whose numbers are computed.
constexpr int mostBits = 4096;

/// Returns the grid of a type; empty without stored integers, with an open signedness, or beyond
/// mostBits.
std::optional<Grid> makeGrid(const fxpDataTypeProp& record);

/// Same, but throws a std::invalid_argument with the reason if there is no grid.
Grid requireGrid(fxpDataTypeProp record);

/// Returns the stored integer of a number, in exact arithmetic.
exact::Integer storedInteger(const exact::Number& number, const Grid& grid,
                             fxpModeRounding_tag rounding, fxpModeOverflow_tag overflow);

/// Returns the slope. The exponent must be within mostBits.
exact::Number exactSlope(const fxpDataTypeProp& record);

/// Returns the slope as a formula: 1.5 * 2^-4, or 2^-4.
std::string slopeFormula(const fxpDataTypeProp& record);

/// Texts of the real-world values of a type: exact decimals, "about" and a rounded decimal, or
/// formulas if the numbers are too large for either. Empty for an open signedness.
struct Range {
    std::string lowest;
    std::string highest;
    std::string resolution; ///< difference of adjacent values

    /// Returns "lowest to highest", or an empty text.
    std::string text() const;
};

Range valueRange(const fxpDataTypeProp& record);

/// Result of quantizing a value with one rounding mode. Numbers are texts as in Range.
struct QuantizedRow {
    const char* rounding = "";
    std::string stored;        ///< the integer
    std::string value;         ///< slope * stored + bias
    std::string error;         ///< `value` minus the given value
    const char* overflow = ""; ///< "saturated", "wrapped", or empty
};

struct QuantizedValue {
    std::string text; ///< as given
    std::vector<QuantizedRow> rows;
};

struct Quantization {
    std::string identifier;
    Range range;
    std::vector<QuantizedValue> values;
};

/// Quantizes decimal numbers with every rounding mode, in exact arithmetic. Throws a
/// std::invalid_argument for a text that is not a number, and for a type without stored integers,
/// with an open signedness, or with a word length or exponent beyond mostBits.
Quantization quantize(const std::vector<std::string>& values, const fxpDataTypeProp& record,
                      fxpModeOverflow_tag overflow);

} // namespace tvtool::fixedpoint
