// Symbolic expressions: parsing and simplification, printing, running sums, expansion of products,
// memory, relations. If GiNaC is installed, it is measured on the same texts in the same run.
#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>
#include <tvtypes/symbolicdims.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#ifdef TVTYPES_BENCH_GINAC
#include <ginac/ginac.h>

#include <sstream>
#endif

namespace {

constexpr std::size_t expressionCount = 1000;
constexpr std::size_t termCount = 256;

using Texts = std::vector<std::string>;

/// Typical sizes, all different.
const Texts& expressions() {
    static const Texts all = [] {
        // Templates: letters are replaced by names, # by integers.
        const char* const forms[] = {"#*A+#",     "A-#",           "(A+#)/#",    "(A+B)*#-A/#",
                                     "A*B",       "(A*B+#)/(A-#)", "#*A+#*B-C",  "(A-#)/B+#",
                                     "A*(B-C)+#", "-A+B*#",        "(A+B)*(A-#)"};
        std::mt19937 random(1);
        const auto below = [&](std::size_t bound) { return random() % bound; };
        std::set<std::string> made;
        while (made.size() < expressionCount) {
            std::string names[3];
            for (std::string& name : names) {
                name = "NMKLW"[below(5)] + std::to_string(below(20));
            }
            std::string text;
            for (const char* form = forms[below(std::size(forms))]; *form != '\0'; ++form) {
                if (*form >= 'A' && *form <= 'C') {
                    text += names[*form - 'A'];
                } else if (*form == '#') {
                    text += std::to_string(2 + below(15));
                } else {
                    text += *form;
                }
            }
            made.insert(text);
        }
        Texts texts(made.begin(), made.end());
        std::shuffle(texts.begin(), texts.end(), random);
        return texts;
    }();
    return all;
}

/// Distinct terms: names, or products of two or three of 16 names.
Texts terms(bool areProducts) {
    std::mt19937 random(2);
    std::set<std::string> made;
    while (made.size() < termCount) {
        if (!areProducts) {
            made.insert("N" + std::to_string(made.size()));
            continue;
        }
        std::string names;
        for (std::size_t i = 0; i < 2 + made.size() % 2; ++i) {
            names += static_cast<char>('a' + random() % 16);
        }
        std::sort(names.begin(), names.end());
        std::string term;
        for (const char name : names) {
            term += (term.empty() ? "" : "*") + std::string(1, name);
        }
        made.insert(term);
    }
    Texts texts(made.begin(), made.end());
    std::shuffle(texts.begin(), texts.end(), random);
    return texts;
}

std::string eighthPower() {
    std::string text = "(a+b+c+d)";
    for (int i = 1; i < 8; ++i) {
        text += "*(a+b+c+d)";
    }
    return text;
}

std::string fortySums() {
    std::string text = "1";
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        text += "*(N" + number + "+M" + number + ")";
    }
    return text;
}

void countItems(benchmark::State& state, std::size_t count) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

std::size_t heapInUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Returns a value of /proc/self/status in bytes.
double memoryOfProcess(const std::string& name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kibibytes = 0;
    while (status >> word && word != name + ":") {
        status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    status >> kibibytes;
    return kibibytes * 1024;
}

/// Growth of the peak memory of the process since construction.
class Peak {
  public:
    Peak() {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << 5;
        before_ = memoryOfProcess("VmRSS");
    }
    double growth() const { return memoryOfProcess("VmHWM") - before_; }

  private:
    double before_;
};

struct Ours {
    unsigned long simplify(unsigned long id) {
        unsigned long isSimple = 0;
        return TV::SymbolicExprSimplify(table).simplify(id, isSimple);
    }
    unsigned long parse(const std::string& text) { return TV::SymbolicExprParser(table)(text); }
    unsigned long read(const std::string& text) { return simplify(parse(text)); }

    TV::SymbolicExprTable table;
};

void readNew(benchmark::State& state) {
    const Texts& texts = expressions();
    for ([[maybe_unused]] auto iteration : state) {
        Ours ours;
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(ours.read(text));
        }
    }
    countItems(state, texts.size());
}
BENCHMARK(readNew);

void readKnown(benchmark::State& state) {
    const Texts& texts = expressions();
    Ours ours;
    for (const std::string& text : texts) {
        ours.read(text);
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(ours.read(text));
        }
    }
    countItems(state, texts.size());
}
BENCHMARK(readKnown);

void parseKnown(benchmark::State& state) {
    const Texts& texts = expressions();
    Ours ours;
    for (const std::string& text : texts) {
        ours.parse(text);
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(ours.parse(text));
        }
    }
    countItems(state, texts.size());
}
BENCHMARK(parseKnown);

void print(benchmark::State& state) {
    Ours ours;
    std::vector<unsigned long> ids;
    for (const std::string& text : expressions()) {
        ids.push_back(ours.read(text));
    }
    const TV::SymbolicExprPrinter printer(ours.table);
    for ([[maybe_unused]] auto iteration : state) {
        for (const unsigned long id : ids) {
            benchmark::DoNotOptimize(printer(ours.table.get(id)));
        }
    }
    countItems(state, ids.size());
}
BENCHMARK(print);

void runningSum(benchmark::State& state) {
    const Texts texts = terms(state.range(0) != 0);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto ours = std::make_optional<Ours>();
        std::vector<unsigned long> ids;
        for (const std::string& text : texts) {
            ids.push_back(ours->read(text));
        }
        unsigned long sum = ours->read("0");
        state.ResumeTiming();
        for (const unsigned long id : ids) {
            sum = ours->simplify(TV::SymbolicPlusExpr(ours->table, sum, id).getId(ours->table));
        }
        benchmark::DoNotOptimize(sum);
        state.PauseTiming();
        ours.reset();
        state.ResumeTiming();
    }
    countItems(state, texts.size());
}
BENCHMARK(runningSum)->ArgName("products")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void expandPower(benchmark::State& state) {
    const std::string text = eighthPower();
    for ([[maybe_unused]] auto iteration : state) {
        Ours ours;
        benchmark::DoNotOptimize(ours.read(text));
    }
}
BENCHMARK(expandPower)->Unit(benchmark::kMicrosecond);

/// Memory of a registered size, parsed only or simplified too.
void memory(benchmark::State& state) {
    const bool isSimplified = state.range(0) != 0;
    const Texts& texts = expressions();
    double bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const std::size_t before = heapInUse();
        Ours ours;
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(isSimplified ? ours.read(text) : ours.parse(text));
        }
        bytes = static_cast<double>(heapInUse() - before);
        state.counters["entries"] =
            static_cast<double>(ours.table.size()) / static_cast<double>(texts.size());
    }
    state.counters["bytes"] = bytes / static_cast<double>(texts.size());
}
BENCHMARK(memory)->ArgName("simplified")->Arg(0)->Arg(1)->Iterations(3);

void productOfSums(benchmark::State& state) {
    const bool isSimplified = state.range(0) != 0;
    const std::string text = fortySums();
    const Peak peak;
    for ([[maybe_unused]] auto iteration : state) {
        Ours ours;
        benchmark::DoNotOptimize(isSimplified ? ours.read(text) : ours.parse(text));
    }
    state.counters["peak"] = peak.growth();
}
BENCHMARK(productOfSums)->ArgName("simplified")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Greater-than relations: each size is greater than the next one, than both of the next pair, or
/// than random later ones.
enum Shape { chain, ladder, manyFacts };

const char* shapeName(std::int64_t shape) {
    return shape == chain ? "chain" : shape == ladder ? "ladder" : "many facts";
}

std::vector<std::pair<int, int>> makeFacts(int shape, int sizes) {
    std::mt19937 random(3);
    std::vector<std::pair<int, int>> facts;
    for (int greater = 0; greater + 1 < sizes; ++greater) {
        if (shape == chain) {
            facts.emplace_back(greater, greater + 1);
            continue;
        }
        const int pair = (greater / 2 + 1) * 2;
        for (int i = 0; i < 2; ++i) {
            const auto later = static_cast<std::uint32_t>(sizes - greater - 1);
            const int lesser =
                shape == ladder ? pair + i : greater + 1 + static_cast<int>(random() % later);
            if (lesser < sizes) {
                facts.emplace_back(greater, lesser);
            }
        }
    }
    std::shuffle(facts.begin(), facts.end(), random);
    return facts;
}

struct Facts {
    explicit Facts(int sizes) {
        for (int i = 0; i < sizes; ++i) {
            ids.push_back(table.registerSymbolicDims(("N" + std::to_string(i)).c_str()));
        }
    }
    void state(const std::vector<std::pair<int, int>>& facts) {
        for (const auto& [greater, lesser] : facts) {
            table.addGreaterThanRelation(ids[static_cast<std::size_t>(greater)],
                                         ids[static_cast<std::size_t>(lesser)], nullptr);
        }
    }

    TVTypeSys::SymbolicDimsTable table;
    std::vector<int> ids;
};

void eachShapeOfFacts(benchmark::internal::Benchmark* made) {
    made->ArgNames({"shape", "sizes"})->ArgsProduct({{chain, ladder, manyFacts}, {100, 1000}});
}

void stateFacts(benchmark::State& state) {
    const auto sizes = static_cast<int>(state.range(1));
    const auto facts = makeFacts(static_cast<int>(state.range(0)), sizes);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto stated = std::make_optional<Facts>(sizes);
        state.ResumeTiming();
        stated->state(facts);
        state.PauseTiming();
        stated.reset();
        state.ResumeTiming();
    }
    state.SetLabel(shapeName(state.range(0)));
    countItems(state, facts.size());
}
BENCHMARK(stateFacts)->Apply(eachShapeOfFacts);

void askFacts(benchmark::State& state) {
    constexpr std::size_t questionCount = 100;
    const auto sizes = static_cast<int>(state.range(1));
    Facts facts(sizes);
    facts.state(makeFacts(static_cast<int>(state.range(0)), sizes));
    std::mt19937 random(4);
    std::vector<int> asked(2 * questionCount);
    for (int& id : asked) {
        id = facts.ids[random() % facts.ids.size()];
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (std::size_t i = 0; i < asked.size(); i += 2) {
            benchmark::DoNotOptimize(facts.table.hasGreaterThanRelation(asked[i], asked[i + 1]));
        }
    }
    state.SetLabel(shapeName(state.range(0)));
    countItems(state, questionCount);
}
BENCHMARK(askFacts)->Apply(eachShapeOfFacts);

#ifdef TVTYPES_BENCH_GINAC

/// A normal form: equal expressions have the same one.
GiNaC::ex normalForm(const GiNaC::ex& expr) {
    const GiNaC::ex parts = expr.numer_denom();
    return parts.op(0).expand() / parts.op(1).expand();
}

void ginacReadNew(benchmark::State& state) {
    const Texts& texts = expressions();
    for ([[maybe_unused]] auto iteration : state) {
        GiNaC::parser reader;
        std::vector<GiNaC::ex> kept;
        for (const std::string& text : texts) {
            kept.push_back(normalForm(reader(text)));
        }
        benchmark::DoNotOptimize(kept.data());
    }
    countItems(state, texts.size());
}
BENCHMARK(ginacReadNew);

void ginacPrint(benchmark::State& state) {
    GiNaC::parser reader;
    std::vector<GiNaC::ex> exprs;
    for (const std::string& text : expressions()) {
        exprs.push_back(normalForm(reader(text)));
    }
    std::ostringstream stream;
    for ([[maybe_unused]] auto iteration : state) {
        for (const GiNaC::ex& expr : exprs) {
            stream.str("");
            stream << expr;
            benchmark::DoNotOptimize(stream.str());
        }
    }
    countItems(state, exprs.size());
}
BENCHMARK(ginacPrint);

/// With a normal form at each step, and without, which suffices if there are no divisions.
void ginacRunningSum(benchmark::State& state) {
    const bool isNormal = state.range(1) != 0;
    GiNaC::parser reader;
    std::vector<GiNaC::ex> exprs;
    for (const std::string& text : terms(state.range(0) != 0)) {
        exprs.push_back(normalForm(reader(text)));
    }
    for ([[maybe_unused]] auto iteration : state) {
        GiNaC::ex sum = 0;
        for (const GiNaC::ex& expr : exprs) {
            sum = isNormal ? normalForm(sum + expr) : sum + expr;
        }
        benchmark::DoNotOptimize(sum);
    }
    countItems(state, exprs.size());
}
BENCHMARK(ginacRunningSum)
    ->ArgNames({"products", "normal"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

void ginacExpandPower(benchmark::State& state) {
    const std::string text = eighthPower();
    for ([[maybe_unused]] auto iteration : state) {
        GiNaC::parser reader;
        benchmark::DoNotOptimize(reader(text).expand());
    }
}
BENCHMARK(ginacExpandPower)->Unit(benchmark::kMicrosecond);

void ginacMemory(benchmark::State& state) {
    const Texts& texts = expressions();
    double bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const std::size_t before = heapInUse();
        GiNaC::parser reader;
        std::vector<GiNaC::ex> kept;
        for (const std::string& text : texts) {
            kept.push_back(normalForm(reader(text)));
        }
        bytes = static_cast<double>(heapInUse() - before);
    }
    state.counters["bytes"] = bytes / static_cast<double>(texts.size());
}
BENCHMARK(ginacMemory)->Iterations(3);

#endif

} // namespace
