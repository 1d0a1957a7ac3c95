/// \file
/// The report for people.
#pragma once

#include "report/findings.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace tvtool::report {

/// "no types", "1 type" or "2 types".
std::string counted(std::size_t count, std::string_view one, std::string_view many);

void printText(const Findings& findings, bool colour, std::ostream& os);

} // namespace tvtool::report
