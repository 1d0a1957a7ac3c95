// Units: parsing, registration, lookup, conversion factors, loading of the database. If UDUNITS-2
// is installed, it is measured on the same texts in the same run.
#include <tvtypes/units.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#ifdef TVTYPES_BENCH_UDUNITS
#include <udunits2.h>
#endif

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;
using TVTypeSys::UnitTable;

constexpr std::size_t expressionCount = 1000;

/// Typical expressions of one to four symbols that have the same meaning in both libraries.
const std::vector<std::string>& expressions() {
    static const std::vector<std::string> all = [] {
        const char* symbols[] = {"m",   "kg", "s",   "A",  "K",  "mol", "cd", "N",   "Pa",
                                 "J",   "W",  "V",   "F",  "H",  "Hz",  "km", "mm",  "cm",
                                 "min", "h",  "ms",  "us", "kN", "kW",  "MW", "MPa", "kPa",
                                 "mA",  "mV", "rad", "ft", "lb", "g"};
        std::mt19937 random(1);
        const auto below = [&](std::size_t bound) { return random() % bound; };
        const auto factor = [&] {
            std::string text = symbols[below(std::size(symbols))];
            return below(3) == 0 ? text + "^" + std::to_string(2 + below(2)) : text;
        };
        std::vector<std::string> made;
        while (made.size() < expressionCount) {
            std::string text = factor();
            const std::size_t further = below(4);
            if (further == 3) {
                text += "/(" + factor() + "*" + factor() + ")";
            }
            for (std::size_t i = 0; further < 3 && i < further; ++i) {
                text += (below(2) == 0 ? "*" : "/") + factor();
            }
            if (std::find(made.begin(), made.end(), text) == made.end()) {
                made.push_back(text);
            }
        }
        return made;
    }();
    return all;
}

/// The expressions, each multiplied by another factor.
std::vector<std::string> expressionsTimes(const std::string& factor) {
    std::vector<std::string> made = expressions();
    for (std::string& text : made) {
        text += "*" + factor;
    }
    return made;
}

std::size_t heapInUse() { return mallinfo2().uordblks; }

void countItems(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(expressionCount));
}

void parse(benchmark::State& state) {
    std::vector<std::u16string> texts;
    for (const std::string& text : expressions()) {
        texts.emplace_back(text.begin(), text.end());
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::u16string& text : texts) {
            Monomial result;
            if (!parseUnitExpr(text, result)) {
                state.SkipWithError("invalid expression");
                return;
            }
            benchmark::DoNotOptimize(result);
        }
    }
    countItems(state);
}
BENCHMARK(parse);

void registerNew(benchmark::State& state) {
    UnitDatabase::getUnitDatabase();
    for ([[maybe_unused]] auto iteration : state) {
        UnitTable table;
        for (const std::string& text : expressions()) {
            benchmark::DoNotOptimize(table.registerUnit(text.c_str(), true));
        }
    }
    countItems(state);
}
BENCHMARK(registerNew);

void registerKnown(benchmark::State& state) {
    UnitTable table;
    for (const std::string& text : expressions()) {
        table.registerUnit(text.c_str(), true);
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : expressions()) {
            benchmark::DoNotOptimize(table.registerUnit(text.c_str(), true));
        }
    }
    countItems(state);
}
BENCHMARK(registerKnown);

/// Texts that are rejected: an unknown name after valid ones, or an operator without an operand.
std::vector<std::string> invalidExpressions() {
    std::vector<std::string> made = expressionsTimes("nounit");
    for (std::size_t i = 0; i < made.size(); i += 2) {
        made[i] = expressions()[i] + "*";
    }
    return made;
}

/// \param read whether the text of the error is read
void reject(benchmark::State& state, bool read) {
    const std::vector<std::string> texts = invalidExpressions();
    UnitTable table;
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : texts) {
            try {
                benchmark::DoNotOptimize(table.registerUnit(text.c_str(), true));
                state.SkipWithError(text.c_str());
                return;
            } catch (const std::exception& error) {
                if (read) {
                    benchmark::DoNotOptimize(std::strlen(error.what()));
                }
            }
        }
    }
    countItems(state);
}
BENCHMARK_CAPTURE(reject, unread, false);
BENCHMARK_CAPTURE(reject, read, true);

void lookUp(benchmark::State& state) {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    std::vector<std::u16string> texts;
    for (const UnitBase& unit : database.getAllUnits()) {
        texts.push_back(unit.symbol);
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::u16string& text : texts) {
            benchmark::DoNotOptimize(database.getUnit(text).size());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
}
BENCHMARK(lookUp);

void factor(benchmark::State& state) {
    UnitTable table;
    const auto unitsOf = [&](const std::vector<std::string>& texts) {
        std::vector<const UnitBase*> units;
        for (const std::string& text : texts) {
            units.push_back(table.getUnit(table.registerUnit(text.c_str(), true)));
        }
        return units;
    };
    const auto from = unitsOf(expressionsTimes("km"));
    const auto to = unitsOf(expressionsTimes("m"));
    for ([[maybe_unused]] auto iteration : state) {
        for (std::size_t i = 0; i < from.size(); ++i) {
            benchmark::DoNotOptimize(from[i]->getScalingFactorToConvertTo(*to[i]));
        }
    }
    countItems(state);
}
BENCHMARK(factor);

void load(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        UnitDatabase::_unit_database_.reset();
        benchmark::DoNotOptimize(UnitDatabase::getUnitDatabase());
    }
    UnitDatabase::_unit_database_.reset();
    const std::size_t before = heapInUse();
    state.counters["units"] = static_cast<double>(UnitDatabase::getUnitDatabase()->getNumUnits());
    state.counters["heap"] = static_cast<double>(heapInUse() - before);
    std::vector<std::u16string> words;
    UnitDatabase::getUnitDatabase()->getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName,
                                                                    u"x", words);
    state.counters["heapCompleted"] = static_cast<double>(heapInUse() - before);
}
BENCHMARK(load)->Unit(benchmark::kMillisecond);

#ifdef TVTYPES_BENCH_UDUNITS

struct System {
    System() {
        ut_set_error_message_handler(ut_ignore);
        system = ut_read_xml(nullptr);
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    ~System() { ut_free_system(system); }
    ut_unit* parse(const std::string& text) const {
        return ut_parse(system, text.c_str(), UT_ASCII);
    }

    ut_system* system;
};

void udunitsParse(benchmark::State& state) {
    const System system;
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : expressions()) {
            ut_unit* unit = system.parse(text);
            if (unit == nullptr) {
                state.SkipWithError(text.c_str());
                return;
            }
            ut_free(unit);
        }
    }
    countItems(state);
}
BENCHMARK(udunitsParse);

void udunitsReject(benchmark::State& state) {
    const System system;
    const std::vector<std::string> texts = invalidExpressions();
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : texts) {
            if (system.parse(text) != nullptr) {
                state.SkipWithError(text.c_str());
                return;
            }
        }
    }
    countItems(state);
}
BENCHMARK(udunitsReject);

void udunitsFactor(benchmark::State& state) {
    const System system;
    std::vector<ut_unit*> from;
    std::vector<ut_unit*> to;
    for (const std::string& text : expressionsTimes("km")) {
        from.push_back(system.parse(text));
    }
    for (const std::string& text : expressionsTimes("m")) {
        to.push_back(system.parse(text));
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (std::size_t i = 0; i < from.size(); ++i) {
            cv_converter* converter = ut_get_converter(from[i], to[i]);
            benchmark::DoNotOptimize(cv_convert_double(converter, 1.0));
            cv_free(converter);
        }
    }
    countItems(state);
    for (std::size_t i = 0; i < from.size(); ++i) {
        ut_free(from[i]);
        ut_free(to[i]);
    }
}
BENCHMARK(udunitsFactor);

void udunitsLoad(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        const System system;
        benchmark::DoNotOptimize(system.system);
    }
    const std::size_t before = heapInUse();
    const System system;
    state.counters["heap"] = static_cast<double>(heapInUse() - before);
}
BENCHMARK(udunitsLoad)->Unit(benchmark::kMillisecond);

#endif

} // namespace
