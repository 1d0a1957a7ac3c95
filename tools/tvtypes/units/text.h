/// \file
/// Units for people.
#pragma once

#include "units/records.h"

#include <ostream>

namespace tvtool::units {

void printText(const std::vector<UnitSheet>& sheets, bool colour, std::ostream& os);
void printText(const UnitFactor& factor, std::ostream& os);
void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os);
void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os);

} // namespace tvtool::units
