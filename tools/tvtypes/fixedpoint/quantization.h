/// \file
/// Quantization of real-world values to the stored integers of a fixed-point type.
#pragma once

#include "fixedpoint/range.h"

#include <tvtypes/fixedpoint.h>

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// The result of quantizing a value with one rounding mode. Numbers are texts as in Range.
struct QuantizedRow {
    const char* rounding = "";
    std::string stored;        ///< the integer
    std::string value;         ///< slope * stored + bias
    std::string error;         ///< that value minus the given one
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

/// Quantizes decimal numbers with every rounding mode, without rounding errors of its own. Throws a
/// std::invalid_argument for a text that is no number, for a type that stores no integers, and for
/// one whose numbers are too large.
Quantization quantize(const std::vector<std::string>& values, const fxpDataTypeProp& record,
                      fxpModeOverflow_tag overflow);

} // namespace tvtool::fixedpoint
