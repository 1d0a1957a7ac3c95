/// \file
/// The report for people.
#pragma once

#include "report/findings.h"

#include <ostream>

namespace tvtool::report {

void printText(const Findings& findings, bool colour, std::ostream& os);

} // namespace tvtool::report
