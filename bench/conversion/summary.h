/// \file
/// Results by class of conversion, as tables in Markdown.
#pragma once

#include "conversion/cells.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace convbench {

/// Ratios of the time of a case to the times of the jobs compared with it, by counter name.
struct Result {
    Case timed;
    std::map<std::string, double> ratios;
};

void writeSummary(std::ostream& out, const std::vector<Result>& results);

} // namespace convbench
