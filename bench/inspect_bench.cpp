// Inspection of one model description, and its two parts reading and naming. Naming registers the
// names of types and variables and looks up declared types, with the tool's checks and a data type
// table; for comparison the same names in std::unordered_map.
#include "fmi/reader.h"
#include "fmi/source.h"
#include "model/model.h"
#include "model/types.h"
#include "report/inspection.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <string>
#include <unordered_map>

namespace {

std::string file;

void Inspect(benchmark::State& state) {
    std::size_t variables = 0;
    for (auto _ : state) {
        const auto model = tvtool::model::readModel(file);
        const tvtool::report::Inspection inspection(*model, file, {});
        variables = model->description->variables.size();
        benchmark::DoNotOptimize(inspection.types.data());
    }
    state.counters["variables"] = static_cast<double>(variables);
}

void ReadOnly(benchmark::State& state) {
    for (auto _ : state) {
        tvtool::findings::Findings findings;
        const auto source = tvtool::fmi::openSource(file, findings);
        benchmark::DoNotOptimize(tvtool::fmi::readDescription(source, findings));
    }
}

void NamingInTable(benchmark::State& state) {
    tvtool::findings::Findings findings;
    const auto source = tvtool::fmi::openSource(file, findings);
    const auto description = tvtool::fmi::readDescription(source, findings);
    for (auto _ : state) {
        tvtool::fmi::checkDescription(*description, findings);
        const tvtool::model::Types types(*description, findings);
        benchmark::DoNotOptimize(types.variableIds().data());
    }
}

void NamingInMap(benchmark::State& state) {
    tvtool::findings::Findings findings;
    const auto source = tvtool::fmi::openSource(file, findings);
    const auto description = tvtool::fmi::readDescription(source, findings);
    for (auto _ : state) {
        std::unordered_map<std::string, int> types;
        std::unordered_map<std::string, int> variables;
        for (const auto& type : description->types) {
            types.try_emplace(std::string(type.name), static_cast<int>(types.size()));
        }
        for (const auto& variable : description->variables) {
            variables.try_emplace(std::string(variable.name), static_cast<int>(variables.size()));
            benchmark::DoNotOptimize(types.find(std::string(variable.declaredType.value_or(""))));
        }
    }
}

} // namespace

BENCHMARK(ReadOnly);
BENCHMARK(Inspect);
BENCHMARK(NamingInTable);
BENCHMARK(NamingInMap);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::cerr << "usage: bench_inspect FILE [--benchmark_...]\n";
        return 2;
    }
    file = argv[1];
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
