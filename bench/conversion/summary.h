/// \file
/// What came of the run, by classes of conversions, as tables in Markdown.
#pragma once

#include "conversion/cells.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace convbench {

/// How much longer a case took than each thing it was timed beside. The names are those of the
/// benchmarks' counters.
struct Result {
    Case timed;
    std::map<std::string, double> ratios;
};

void writeSummary(std::ostream& out, const std::vector<Result>& results);

} // namespace convbench
