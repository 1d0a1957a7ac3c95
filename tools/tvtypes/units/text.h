/// \file
/// Units for people.
#pragma once

#include "report/unit.h"

#include <ostream>

namespace tvtool::report {

void printText(const std::vector<UnitSheet>& sheets, bool colour, std::ostream& os);
void printText(const UnitFactor& factor, std::ostream& os);
void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os);
void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os);

} // namespace tvtool::report
