/// \file
/// The report for people.
#pragma once

#include "model/findings.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace tvtool::model {

void printText(const Findings& findings, bool colour, std::ostream& os);

} // namespace tvtool::model
