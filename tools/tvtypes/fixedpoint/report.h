/// \file
/// Reports on numeric types, as text and as JSON.
///
/// The JSON is one object in one line. Its member names are stable; absent values are null, absent
/// lists empty.
///
/// | Report         | Members                                                                   |
/// |----------------|---------------------------------------------------------------------------|
/// | details        | `types`: array of `text`, `identifier`, `fixedPointName`, `kind`, `mode`  |
/// |                | (FXP_DT_FIXPT ...), `signedness` (null if open), `wordLength`,            |
/// |                | `fixedExponent`, `slopeAdjustmentFactor`, `bias`, `overrideState`,        |
/// |                | `slope`, `resolution`, `lowest`, `highest`, `storage`, `storageSize`,     |
/// |                | `atomic`, `constructors` (array of `function`, `scaling`, `text`),        |
/// |                | `notes`                                                                   |
/// | a quantization | `identifier`, `resolution`, `lowest`, `highest`, `values`: array of       |
/// |                | `text`, `results` (array of `rounding`, `stored`, `value`, `error`,       |
/// |                | `overflow`: `saturated`, `wrapped` or null)                               |
///
/// `slope`, `resolution`, `lowest`, `highest`, `stored`, `value` and `error` are texts as in Range:
/// "0.0625", "about 0.10000000000000001" or, where numbers are too large, "-2^99 * 2^-4".
#pragma once

#include "fixedpoint/details.h"
#include "fixedpoint/quantization.h"

#include <ostream>
#include <vector>

namespace tvtool::fixedpoint {

void printText(const std::vector<TypeDetails>& types, bool colour, std::ostream& os);
void printJson(const std::vector<TypeDetails>& types, std::ostream& os);
void printText(const Quantization& quantization, bool colour, std::ostream& os);
void printJson(const Quantization& quantization, std::ostream& os);

} // namespace tvtool::fixedpoint
