/// \file
/// Numeric types for people.
#pragma once

#include "report/fixpt.h"

#include <ostream>
#include <vector>

namespace tvtool::report {

void printText(const std::vector<FixptSheet>& sheets, bool colour, std::ostream& os);
void printText(const FixptQuantization& quantization, bool colour, std::ostream& os);

} // namespace tvtool::report
