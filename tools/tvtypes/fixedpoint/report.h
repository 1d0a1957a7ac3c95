/// \file
/// Reports on numeric types, as text and as JSON.
///
/// The JSON is one object in one line. Its member names, which the columns in report.cpp list, are
/// stable; absent values are null, absent lists empty. Numbers such as `slope`, `lowest` and
/// `stored` are texts as in Range: "0.0625", "about 0.10000000000000001" or, if they are too large,
/// "-2^99 * 2^-4".
#pragma once

#include "fixedpoint/details.h"

#include <ostream>
#include <vector>

namespace tvtool::fixedpoint {

void printText(const std::vector<TypeDetails>& types, bool colour, std::ostream& os);
void printJson(const std::vector<TypeDetails>& types, std::ostream& os);
void printText(const Quantization& quantization, bool colour, std::ostream& os);
void printJson(const Quantization& quantization, std::ostream& os);

} // namespace tvtool::fixedpoint
