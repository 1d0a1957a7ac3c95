/// \file
/// Numeric types for programs: one JSON object on one line, its member names stable.
///
/// | Of             | Members                                                                   |
/// |----------------|---------------------------------------------------------------------------|
/// | sheets         | `types`: array of `text`, `identifier`, `kind`, `mode` (FXP_DT_FIXPT ...),|
/// |                | `signedness` (null if open), `wordLength`, `fixedExponent`,               |
/// |                | `slopeAdjustmentFactor`, `bias`, `overrideState`, `slope`, `resolution`,  |
/// |                | `lowest`, `highest`, `storage`, `storageSize`, `atomic`, `constructors`   |
/// |                | (array of `function`, `scaling`, `text`), `notes`                         |
/// | a quantization | `identifier`, `resolution`, `lowest`, `highest`, `values`: array of       |
/// |                | `text`, `results` (array of `rounding`, `stored`, `value`, `error`,       |
/// |                | `overflow`, which is `saturated`, `wrapped` or null)                      |
///
/// `slope`, `resolution`, `lowest`, `highest`, `stored`, `value` and `error` are texts, as people
/// see them: "0.0625", "about 0.10000000000000001" or, where numbers are too large, "-2^99 * 2^-4".
/// What is empty or not to be had is null, but for arrays.
#pragma once

#include "fixedpoint/records.h"

#include <ostream>
#include <vector>

namespace tvtool::fixedpoint {

void printJson(const std::vector<FixptSheet>& sheets, std::ostream& os);
void printJson(const FixptQuantization& quantization, std::ostream& os);

} // namespace tvtool::fixedpoint
