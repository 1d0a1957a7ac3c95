/// \file
/// Reports on units, as text and as JSON.
///
/// The JSON is one object in one line. Its member names, which the columns in report.cpp list, are
/// stable; absent values are null, absent lists empty.
#pragma once

#include "units/details.h"
#include "units/search.h"

#include <ostream>
#include <vector>

namespace tvtool::units {

void printText(const std::vector<UnitDetails>& units, bool colour, std::ostream& os);
void printJson(const std::vector<UnitDetails>& units, std::ostream& os);
void printText(const UnitFactor& factor, bool colour, std::ostream& os);
void printJson(const UnitFactor& factor, std::ostream& os);
void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os);
void printJson(const std::vector<UnitLine>& lines, std::ostream& os);
void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os);
void printJson(const std::vector<UnitWord>& words, std::ostream& os);

} // namespace tvtool::units
