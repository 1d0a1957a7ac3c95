/// \file
/// Reports on symbolic dimensions, as text and as JSON.
///
/// The JSON is one object in one line. Its member names, which the columns in report.cpp list, are
/// stable; absent values are null, absent lists empty.
#pragma once

#include "dims/fact_records.h"
#include "dims/reading.h"

#include <ostream>
#include <vector>

namespace tvtool::dims {

void printText(const std::vector<DimsDetails>& dimensions, bool colour, std::ostream& os);
void printJson(const std::vector<DimsDetails>& dimensions, std::ostream& os);
/// \param isListed whether to print all facts as well. The report is a file of facts then: all
/// other
///                 lines are comments.
void printText(const FactReport& report, bool isListed, bool colour, std::ostream& os);
void printJson(const FactReport& report, std::ostream& os);

} // namespace tvtool::dims
