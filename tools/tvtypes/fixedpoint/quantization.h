/// \file
/// Quantization of real-world values to the stored integers of a fixed-point type.
#pragma once

#include "fixedpoint/range.h"

#include <tvtypes/fixedpoint.h>

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

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
