/// \file
/// Times of things that are compared with each other: taken in turn, so that what disturbs one
/// disturbs the others too.
#pragma once

#include <functional>
#include <vector>

namespace convbench {

/// Does one thing so many times.
using Job = std::function<void(long times)>;

/// The median time of each job in nanoseconds. The jobs take turns for about so many seconds, five
/// rounds at least. What is quick is timed many times at once.
std::vector<double> takeTurns(const std::vector<Job>& jobs, double seconds);

double medianOf(std::vector<double> values);

} // namespace convbench
