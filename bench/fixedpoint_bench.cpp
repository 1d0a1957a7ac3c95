// Strings of numeric types: from the cache, compared with a plain hash table of the same keys, and
// computed without it, compared with a formatting library.
#include <tvtypes/fixedpoint.h>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <new>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

std::int64_t allocations = 0;

} // namespace

// Inlined, they would draw warnings about mixing new and free.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace {

using Records = std::vector<fxpDataTypeProp>;

/// Distinct binary-point records in random order: signed and unsigned, 1 to 64 bits, exponents from
/// -40 to 40.
Records binaryPointRecords(std::size_t count) {
    Records records;
    for (int exponent = -40; exponent <= 40; ++exponent) {
        for (int wordLength = 1; wordLength <= 64; ++wordLength) {
            for (const std::uint32_t signedness : {0U, 1U}) {
                records.push_back({FXP_DT_FIXPT, signedness, wordLength, exponent, 1.0, 0.0, 0});
            }
        }
    }
    std::shuffle(records.begin(), records.end(), std::mt19937(3));
    records.resize(count);
    return records;
}

Records slopeAndBiasRecords(std::size_t count) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    Records records = binaryPointRecords(count);
    for (fxpDataTypeProp& record : records) {
        record.SlopeAdjustmentFactor = 1.0 + fraction(random);
        record.Bias = fraction(random);
    }
    return records;
}

/// The arithmetic of the cache's hash, inlined.
struct PlainHash {
    std::size_t operator()(const fxpDataTypeProp& record) const {
        std::size_t seed = 0;
        const auto combine = [&](std::size_t value) {
            seed ^= value + 0x9e3779b9U + (seed << 6) + (seed >> 2);
        };
        combine(static_cast<std::size_t>(record.DataTypeMode));
        combine(record.Signedness);
        combine(static_cast<std::uint32_t>(record.WordLength));
        combine(static_cast<std::size_t>(record.FixedExponent));
        combine(static_cast<std::size_t>(record.DataTypeOverrideState));
        return seed;
    }
};

struct PlainEqual {
    bool operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const {
        return a.DataTypeMode == b.DataTypeMode && a.Signedness == b.Signedness &&
               a.WordLength == b.WordLength && a.FixedExponent == b.FixedExponent &&
               a.SlopeAdjustmentFactor == b.SlopeAdjustmentFactor && a.Bias == b.Bias &&
               a.DataTypeOverrideState == b.DataTypeOverrideState;
    }
};

using PlainTable = std::unordered_map<fxpDataTypeProp, std::string, PlainHash, PlainEqual>;

template <class Request>
double nanosecondsEach(const Records& records, Request request) {
    constexpr std::size_t requests = 100000;
    std::size_t next = 0;
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < requests; ++i) {
        benchmark::DoNotOptimize(request(records[next]));
        next = next + 1 == records.size() ? 0 : next + 1;
    }
    const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / requests;
}

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Cached requests and lookups in a plain table, in turns, so that a disturbance affects both.
template <class Request>
void compareWithPlainTable(benchmark::State& state, const Records& records, Request request) {
    PlainTable table;
    for (const fxpDataTypeProp& record : records) {
        table.emplace(record, *request(record));
    }
    const auto lookUp = [&](const fxpDataTypeProp& record) { return &table.find(record)->second; };
    std::vector<double> times;
    std::vector<double> plainTimes;
    std::vector<double> ratios;
    std::int64_t allocated = 0;
    for (auto _ : state) {
        const double plain = nanosecondsEach(records, lookUp);
        const std::int64_t start = allocations;
        const double time = nanosecondsEach(records, request);
        allocated += allocations - start;
        times.push_back(time);
        plainTimes.push_back(plain);
        ratios.push_back(time / plain);
        state.SetIterationTime(time * 1e-9);
    }
    state.counters["plain"] = medianOf(plainTimes);
    state.counters["median"] = medianOf(times);
    state.counters["ratio"] = medianOf(ratios);
    state.counters["allocations"] = static_cast<double>(allocated);
}

// Function objects, which are inlined; a call through a pointer would be timed too.
constexpr auto requestIdentifier = [](const fxpDataTypeProp& record) {
    return &fxpDataTypeToIdentifierString(&record);
};
constexpr auto requestConstructor = [](const fxpDataTypeProp& record) {
    return &fxpDataTypeToConstructorString(record, FxpDT::PreferFixdt, FxpDT::PreferFractionLength);
};

void cachedIdentifier(benchmark::State& state) {
    compareWithPlainTable(state, binaryPointRecords(static_cast<std::size_t>(state.range(0))),
                          requestIdentifier);
}

void cachedConstructor(benchmark::State& state) {
    compareWithPlainTable(state, binaryPointRecords(static_cast<std::size_t>(state.range(0))),
                          requestConstructor);
}

void cachedSlopeAndBias(benchmark::State& state) {
    compareWithPlainTable(state, slopeAndBiasRecords(static_cast<std::size_t>(state.range(0))),
                          requestConstructor);
}

/// Computes a string for each record in turn.
template <class Request>
void timeComputation(benchmark::State& state, const Records& records, Request request) {
    const std::int64_t before = allocations;
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(request(records[next]));
        next = next + 1 == records.size() ? 0 : next + 1;
    }
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations - before),
                                                       benchmark::Counter::kAvgIterations);
}

constexpr std::size_t formatted = 1000;

Records recordsToFormat(const benchmark::State& state) {
    return state.range(0) == 0 ? binaryPointRecords(formatted) : slopeAndBiasRecords(formatted);
}

void newIdentifier(benchmark::State& state) {
    timeComputation(state, recordsToFormat(state), [](const fxpDataTypeProp& record) {
        return fxpDataTypeToIdentifierString_NoCache(&record);
    });
}

void newConstructor(benchmark::State& state) {
    timeComputation(state, recordsToFormat(state), [](const fxpDataTypeProp& record) {
        return fxpDataTypeToConstructorString_NoCache(record, FxpDT::PreferFixdt,
                                                      FxpDT::PreferFractionLength);
    });
}

/// The same constructor strings, except for the form of large and small numbers.
void fmtConstructor(benchmark::State& state) {
    timeComputation(state, recordsToFormat(state), [](const fxpDataTypeProp& record) {
        return record.Bias == 0.0 && record.SlopeAdjustmentFactor == 1.0
                   ? fmt::format("fixdt({},{},{})", record.Signedness, record.WordLength,
                                 -record.FixedExponent)
                   : fmt::format("fixdt({},{},{},{})", record.Signedness, record.WordLength,
                                 std::ldexp(record.SlopeAdjustmentFactor, record.FixedExponent),
                                 record.Bias);
    });
}

} // namespace

BENCHMARK(cachedIdentifier)->Arg(1)->Arg(100)->Arg(10000)->UseManualTime()->Iterations(200);
BENCHMARK(cachedConstructor)->Arg(1)->Arg(100)->Arg(10000)->UseManualTime()->Iterations(200);
BENCHMARK(cachedSlopeAndBias)->Arg(1)->Arg(100)->Arg(10000)->UseManualTime()->Iterations(200);
BENCHMARK(newIdentifier)->ArgName("scaled")->Arg(0)->Arg(1);
BENCHMARK(newConstructor)->ArgName("scaled")->Arg(0)->Arg(1);
BENCHMARK(fmtConstructor)->ArgName("scaled")->Arg(0)->Arg(1);
