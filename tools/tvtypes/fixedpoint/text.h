/// \file
/// Numeric types for people.
#pragma once

#include "fixedpoint/records.h"

#include <ostream>
#include <vector>

namespace tvtool::fixedpoint {

void printText(const std::vector<FixptSheet>& sheets, bool colour, std::ostream& os);
void printText(const FixptQuantization& quantization, bool colour, std::ostream& os);

} // namespace tvtool::fixedpoint
