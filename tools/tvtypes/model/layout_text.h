/// \file
/// Memory maps for people.
#pragma once

#include "report/layout.h"

#include <ostream>

namespace tvtool::report {

void printLayout(const LayoutFindings& findings, bool colour, std::ostream& os);

} // namespace tvtool::report
