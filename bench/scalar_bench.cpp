// Conversions of one element: by ids, by the function that the ids select, and by the ids of a
// table, beside a call through a pointer of a function that casts.
#include <tvtypes/conversion/conversion.h>
#include <tvtypes/datatypetable.h>

#include <benchmark/benchmark.h>

#include <iterator>

namespace {

struct Pair {
    int srcId;
    int dstId;
    fxpModeOverflow_tag overflow;
    fxpModeRounding_tag rounding;
};

constexpr Pair pairs[] = {{6, 4, FXP_OVERFLOW_WRAP, FXP_ROUND_FLOOR},
                          {6, 4, FXP_OVERFLOW_SATURATE, FXP_ROUND_FLOOR},
                          {6, 0, FXP_OVERFLOW_WRAP, FXP_ROUND_FLOOR},
                          {0, 1, FXP_OVERFLOW_WRAP, FXP_ROUND_FLOOR},
                          {0, 4, FXP_OVERFLOW_SATURATE, FXP_ROUND_CONVERGENT},
                          {1, 6, FXP_OVERFLOW_WRAP, FXP_ROUND_FLOOR}};

const double source = 3;
double destination;

void cast(const void* src, void* dst) {
    *static_cast<int*>(dst) = static_cast<int>(*static_cast<const double*>(src));
}

void IndirectCall(benchmark::State& state) {
    void (*function)(const void*, void*) = cast;
    for (auto _ : state) {
        benchmark::DoNotOptimize(function);
        function(&source, &destination);
        benchmark::ClobberMemory();
    }
}

void SelectedFunction(benchmark::State& state) {
    const Pair& pair = pairs[state.range(0)];
    tvBuiltinDtypeConvFcn function =
        utGetTvBuiltinDtypeConvFcn(pair.srcId, pair.dstId, pair.overflow, pair.rounding);
    for (auto _ : state) {
        benchmark::DoNotOptimize(function);
        function(&source, &destination, 1, 1, false, false, false, pair.srcId, pair.dstId,
                 pair.overflow, pair.rounding);
        benchmark::ClobberMemory();
    }
}

void ByIds(benchmark::State& state) {
    const Pair& pair = pairs[state.range(0)];
    for (auto _ : state) {
        tvConvertBuiltInDTypeVectWithCheck(&source, 1, pair.srcId, false, &destination, 1,
                                           pair.dstId, false, pair.overflow, pair.rounding, false);
        benchmark::ClobberMemory();
    }
}

void ByTable(benchmark::State& state) {
    const Pair& pair = pairs[state.range(0)];
    const TVTypeSys::DataTypeTable table;
    for (auto _ : state) {
        table.convertToUsingSrcId(pair.dstId, pair.srcId, 1, &source, nullptr, &destination);
        benchmark::ClobberMemory();
    }
}

} // namespace

BENCHMARK(IndirectCall);
BENCHMARK(SelectedFunction)->DenseRange(0, std::size(pairs) - 1);
BENCHMARK(ByIds)->DenseRange(0, std::size(pairs) - 1);
BENCHMARK(ByTable)->DenseRange(0, std::size(pairs) - 1);
