// Registration and lookup by name, compared with a plain std::unordered_map in the same run.
#include <tvtypes/datatypetable.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using TVTypeSys::DataTypeTable;

constexpr auto clientSource = static_cast<DataTypeSource>(2);

std::vector<std::string> names(std::int64_t count) {
    std::vector<std::string> result;
    for (std::int64_t i = 0; i < count; ++i) {
        result.push_back("subsystem_signal_" + std::to_string(i));
    }
    return result;
}

std::vector<std::string> shuffled(std::vector<std::string> all) {
    std::mt19937 random(1);
    std::shuffle(all.begin(), all.end(), random);
    return all;
}

std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void perName(benchmark::State& state) {
    state.counters["per_name"] =
        benchmark::Counter(static_cast<double>(state.iterations() * state.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void Register(benchmark::State& state) {
    const auto all = names(state.range(0));
    std::size_t bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<DataTypeTable>();
        const std::size_t before = heapInUse();
        state.ResumeTiming();
        for (const std::string& name : all) {
            table->registerDataType(name.c_str(), clientSource, nullptr);
        }
        state.PauseTiming();
        bytes = heapInUse() - before;
        table.reset();
        state.ResumeTiming();
    }
    perName(state);
    state.counters["bytes_per_type"] =
        static_cast<double>(bytes) / static_cast<double>(state.range(0));
}

void RegisterInMap(benchmark::State& state) {
    const auto all = names(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto map = std::make_unique<std::unordered_map<std::string, int>>();
        state.ResumeTiming();
        for (const std::string& name : all) {
            map->try_emplace(name, static_cast<int>(map->size()));
        }
        state.PauseTiming();
        map.reset();
        state.ResumeTiming();
    }
    perName(state);
}

void Lookup(benchmark::State& state) {
    const auto all = names(state.range(0));
    DataTypeTable table;
    for (const std::string& name : all) {
        table.registerDataType(name.c_str(), clientSource, nullptr);
    }
    const auto wanted = shuffled(all);
    for (auto _ : state) {
        for (const std::string& name : wanted) {
            benchmark::DoNotOptimize(table.getDataTypeId(name.c_str()));
        }
    }
    perName(state);
}

void LookupInMap(benchmark::State& state) {
    const auto all = names(state.range(0));
    std::unordered_map<std::string, int> map;
    for (const std::string& name : all) {
        map.try_emplace(name, static_cast<int>(map.size()));
    }
    const auto wanted = shuffled(all);
    for (auto _ : state) {
        for (const std::string& name : wanted) {
            benchmark::DoNotOptimize(map.find(name));
        }
    }
    perName(state);
}

} // namespace

BENCHMARK(Register)->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(RegisterInMap)->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(Lookup)->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(LookupInMap)->Arg(100)->Arg(10'000)->Arg(1'000'000);
