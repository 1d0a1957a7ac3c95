// Symbolic expressions: reading and simplifying, printing, sums that grow, products multiplied out,
// memory. Where GiNaC is installed, it does the same with the same texts in the same run.
#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>

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

/// Sizes such as models have, no two alike.
const Texts& expressions() {
    static const Texts all = [] {
        // A letter stands for a name, a # for a number.
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

/// Terms to be added up: each another name, or each another product of two or three of 16 names.
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

/// A line of /proc/self/status, in bytes.
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

/// The greatest memory of the process from here on, above what it is now.
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

/// What a registered size takes, and what simplifying it adds to reading it.
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

#ifdef TVTYPES_BENCH_GINAC

/// A form that equal expressions share.
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

/// With a normal form at each step, and without, which is enough as long as nothing is divided.
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
