// Times of every conversion function, compared with memcpy and with other libraries that implement
// the same conversion. Compared jobs take turns within one benchmark.
#include "conversion/buffers.h"
#include "conversion/others.h"
#include "conversion/summary.h"
#include "conversion/timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace convbench {

namespace {

constexpr double defaultSeconds = 0.03;

/// A job that is timed in turns with the case, and the counter for the ratio of their times.
struct Rival {
    std::string counter;
    Job job;
    bool isOther = false; ///< of another library: its results must be identical
};

Job conversion(tvBuiltinDtypeConvFcn convert, const Case& timed, const Buffers& buffers) {
    const void* const src = buffers.source();
    void* const dst = buffers.destination();
    return [=](long times) {
        const Cell& cell = timed.cell;
        const unsigned long srcCount = timed.shape == Shape::Scalar ? 1 : timed.count;
        for (long i = 0; i < times; ++i) {
            benchmark::DoNotOptimize(convert(src, dst, srcCount, timed.count, timed.srcIsComplex(),
                                             timed.dstIsComplex(), timed.checked, cell.src,
                                             cell.dst, cell.overflow, cell.rounding));
        }
    };
}

Job copy(std::size_t bytes, const Buffers& buffers) {
    const void* const src = buffers.source();
    void* const dst = buffers.destination();
    return [=](long times) {
        for (long i = 0; i < times; ++i) {
            std::memcpy(dst, src, bytes);
            benchmark::ClobberMemory();
        }
    };
}

Job otherConversion(OtherFcn convert, const Case& timed, const Buffers& buffers) {
    const void* const src = buffers.source();
    void* const dst = buffers.destination();
    return [=, count = timed.count](long times) {
        for (long i = 0; i < times; ++i) {
            convert(src, dst, count);
            benchmark::ClobberMemory();
        }
    };
}

std::vector<Rival> findRivals(const Case& timed, const Buffers& buffers) {
    const tvBuiltinDtypeConvFcn convert = timed.cell.function();
    std::vector<Rival> rivals = {
        {"copy_half", copy((timed.srcBytes() + timed.dstBytes()) / 2, buffers)},
        {"copy_max", copy(std::max(timed.srcBytes(), timed.dstBytes()), buffers)}};
    if (timed.checked) {
        Case unchecked = timed;
        unchecked.checked = false;
        rivals.push_back({"to_unchecked", conversion(convert, unchecked, buffers)});
    }
    if (timed.cell.roundingMatters &&
        (timed.cell.rounding == FXP_ROUND_ROUND || timed.cell.rounding == FXP_ROUND_NEAR)) {
        rivals.push_back(
            {"to_floor", conversion(timed.cell.function(FXP_ROUND_FLOOR), timed, buffers)});
    }
    const bool partsBecomeParts = timed.cell.dst != booleanId || timed.cell.src == booleanId;
    if (timed.shape == Shape::Complex && partsBecomeParts) {
        // With the same number of parts, so that the ratio is that of a part.
        Case real = timed;
        real.shape = Shape::Real;
        real.count = 2 * timed.count;
        rivals.push_back({"to_real", conversion(convert, real, buffers)});
    }
    if (timed.shape == Shape::Real && !timed.checked) {
        for (const Other& other : others()) {
            if (const OtherFcn theirs = other.find != nullptr ? other.find(timed) : nullptr) {
                rivals.push_back({std::string("to_") + other.name,
                                  otherConversion(theirs, timed, buffers), true});
            }
        }
    }
    return rivals;
}

/// Whether the conversion loses values exactly if the data are not named kept.
bool dataMatchName(const Case& timed, const Buffers& buffers) {
    if (timed.data == Data::Far) {
        return true;
    }
    const Cell& cell = timed.cell;
    const bool kept = cell.function()(buffers.source(), buffers.destination(), timed.count,
                                      timed.count, timed.srcIsComplex(), timed.dstIsComplex(), true,
                                      cell.src, cell.dst, cell.overflow, cell.rounding);
    return kept == (timed.data == Data::Kept);
}

/// Whether the results of both libraries are identical, byte for byte.
bool sameResults(const Job& ours, const Job& theirs, const Case& timed, const Buffers& buffers) {
    ours(1);
    const auto* bytes = static_cast<const unsigned char*>(buffers.destination());
    const std::vector<unsigned char> expected(bytes, bytes + timed.dstBytes());
    std::memset(buffers.destination(), 0xA5, timed.dstBytes());
    theirs(1);
    return std::memcmp(bytes, expected.data(), expected.size()) == 0;
}

struct Context {
    double seconds = defaultSeconds; ///< how long a case is timed
    Buffers buffers;
    std::vector<Result> results;
    bool failed = false;
};

void run(benchmark::State& state, const Case& timed, Context& context) {
    const auto fail = [&](const std::string& reason) {
        state.SkipWithError(reason.c_str());
        context.failed = true;
    };
    Buffers& buffers = context.buffers;
    buffers.prepare(timed);
    if (!dataMatchName(timed, buffers)) {
        fail("the data do not match the name of the case");
        return;
    }
    const Job ours = conversion(timed.cell.function(), timed, buffers);
    const std::vector<Rival> rivals = findRivals(timed, buffers);
    std::vector<Job> jobs = {ours};
    for (const Rival& rival : rivals) {
        if (rival.isOther && !sameResults(ours, rival.job, timed, buffers)) {
            fail(rival.counter + ": the results differ");
            return;
        }
        jobs.push_back(rival.job);
    }
    Result result{timed, {}};
    for (auto _ : state) {
        const std::vector<double> medians = takeTurns(jobs, context.seconds);
        state.SetIterationTime(medians[0] * 1e-9);
        state.counters["ns_per_element"] = medians[0] / static_cast<double>(timed.count);
        for (std::size_t i = 0; i < rivals.size(); ++i) {
            result.ratios[rivals[i].counter] = medians[0] / medians[i + 1];
        }
    }
    for (const auto& [counter, ratio] : result.ratios) {
        state.counters[counter] = ratio;
    }
    context.results.push_back(std::move(result));
}

} // namespace

} // namespace convbench

int main(int argc, char** argv) {
    using namespace convbench;

    benchmark::Initialize(&argc, argv);
    Context context;
    const std::string option = "--seconds=";
    if (argc == 2 && std::string(argv[1]).starts_with(option)) {
        context.seconds = std::atof(argv[1] + option.size());
    } else if (argc != 1) {
        std::cerr << "usage: bench_conversion [--seconds=S] [--benchmark_...]\n"
                     "S is how long a case is timed, 0.03 if not given.\n";
        return 2;
    }
    for (const Other& other : others()) {
        if (other.find == nullptr) {
            std::cerr << "Built without " << other.name << ".\n";
        }
    }

    for (const Case& timed : allCases()) {
        benchmark::RegisterBenchmark(
            timed.name().c_str(),
            [&context, timed](benchmark::State& state) { run(state, timed, context); })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    if (!context.results.empty()) {
        writeSummary(std::cout, context.results);
    }
    return context.failed ? 1 : 0;
}
