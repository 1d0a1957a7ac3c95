/// \file
/// Timing of jobs that are compared. They take turns, so that a disturbance affects all of them.
#pragma once

#include <functional>
#include <vector>

namespace convbench {

/// Executes one operation `times` times.
using Job = std::function<void(long times)>;

/// Returns the median time of each job in nanoseconds. The jobs take turns for about `seconds`, at
/// least five rounds. Short operations are repeated within one timing.
std::vector<double> takeTurns(const std::vector<Job>& jobs, double seconds);

/// Returns the median.
double medianOf(std::vector<double> values);

} // namespace convbench
