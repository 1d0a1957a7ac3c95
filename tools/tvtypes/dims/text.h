/// \file
/// Symbolic dimensions for people.
#pragma once

#include "dims/records.h"

#include <fmt/color.h>

#include <ostream>

namespace tvtool::dims {

/// How a chain of facts or a sentence gives a reason, safe to show.
std::string reasonText(const DimsReason& reason);

void printText(const std::vector<DimsSheet>& sheets, bool colour, std::ostream& os);
/// With `isListed` the facts as well.
void printText(const FactReport& report, bool isListed, bool colour, std::ostream& os);
void printFacts(const std::vector<DimsFact>& facts, fmt::text_style headingStyle, std::ostream& os);

} // namespace tvtool::dims
