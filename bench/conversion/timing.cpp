#include "conversion/timing.h"

#include <algorithm>
#include <chrono>

namespace convbench {

namespace {

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr double shortestTiming = 20'000; // ns: large beside the resolution and cost of the clock
constexpr std::size_t fewestRounds = 5;

double nanoseconds(const Job& job, long times) {
    const auto start = Clock::now();
    job(times);
    return Nanoseconds(Clock::now() - start).count();
}

long timesInOneTiming(const Job& job) {
    long times = 1;
    nanoseconds(job, times);
    for (double taken = nanoseconds(job, times); taken < shortestTiming;
         taken = nanoseconds(job, times)) {
        times *= 2;
    }
    return times;
}

} // namespace

std::vector<double> takeTurns(const std::vector<Job>& jobs, double seconds) {
    std::vector<long> times;
    for (const Job& job : jobs) {
        times.push_back(timesInOneTiming(job));
    }
    std::vector<std::vector<double>> taken(jobs.size());
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    do {
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            taken[i].push_back(nanoseconds(jobs[i], times[i]) / static_cast<double>(times[i]));
        }
    } while (taken.front().size() < fewestRounds || Clock::now() < end);
    std::vector<double> medians;
    for (const std::vector<double>& each : taken) {
        medians.push_back(medianOf(each));
    }
    return medians;
}

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace convbench
