// Any facts and questions about three sizes, with the results compared with exhaustive search of
// small sizes: no objection to a fact that some of them satisfy together with the facts before it,
// and no answer that one of them contradicts.
#include "dims/fact_file.h"
#include "support/require.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tvtool;
using fuzzing::require;
using Known = dims::DimsAnswer::Known;

constexpr int sizes = 3;
constexpr int bound = 7;
using Point = std::array<int, sizes>;

/// A sum of products of sizes.
struct Sum {
    struct Term {
        int coefficient;
        std::vector<int> factors;
    };
    std::vector<Term> terms;

    explicit Sum(FuzzedDataProvider& input) {
        for (int i = input.ConsumeIntegralInRange(1, 3); i > 0; --i) {
            Term term{input.ConsumeIntegralInRange(-5, 9), {}};
            for (int k = input.ConsumeIntegralInRange(0, 2); k > 0; --k) {
                term.factors.push_back(input.ConsumeIntegralInRange(0, sizes - 1));
            }
            terms.push_back(term);
        }
    }

    std::string text() const {
        std::string all;
        for (const Term& term : terms) {
            all += (all.empty() ? "" : "+") + ("(" + std::to_string(term.coefficient)) + ")";
            for (const int factor : term.factors) {
                all += std::string("*") + static_cast<char>('A' + factor);
            }
        }
        return all;
    }

    std::int64_t at(const Point& point) const {
        std::int64_t sum = 0;
        for (const Term& term : terms) {
            std::int64_t product = term.coefficient;
            for (const int factor : term.factors) {
                product *= point[static_cast<std::size_t>(factor)];
            }
            sum += product;
        }
        return sum;
    }
};

struct Line {
    Sum left;
    int relation; ///< of the left side to the right one: -1, 0 or 1
    Sum right;
    bool isQuestion;

    explicit Line(FuzzedDataProvider& input)
        : left(input),
          relation(input.ConsumeIntegralInRange(-1, 1)),
          right(input),
          isQuestion(input.ConsumeIntegralInRange(0, 2) == 0) {}

    std::string text() const {
        static const char* const signs[] = {" < ", " == ", " > "};
        return left.text() + signs[relation + 1] + right.text() + (isQuestion ? " ?\n" : "\n");
    }
    bool holds(const Point& point) const {
        const std::int64_t difference = left.at(point) - right.at(point);
        return relation == 0 ? difference == 0 : relation * difference > 0;
    }
};

std::vector<Point> allPoints() {
    std::vector<Point> points;
    for (int i = 0; i < bound * bound * bound; ++i) {
        points.push_back({i % bound, i / bound % bound, i / bound / bound});
    }
    return points;
}

void check(const std::vector<Line>& lines, const dims::FactReport& report) {
    require(report.faults.empty() && report.areWhole);
    std::map<std::uint64_t, const dims::DimsObjection*> objections;
    for (const dims::DimsObjection& objection : report.objections) {
        objections[objection.line] = &objection;
    }
    auto answer = report.answers.begin();
    std::vector<Point> points = allPoints();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const auto holds = [&](const Point& point) { return line.holds(point); };
        if (line.isQuestion) {
            require(answer != report.answers.end() && answer->line == i + 1);
            for (const Known known : {answer->library, answer->all}) {
                require(known != Known::Yes || std::ranges::all_of(points, holds));
                require(known != Known::No || std::ranges::none_of(points, holds));
            }
            ++answer;
            continue;
        }
        std::erase_if(points, [&](const Point& point) { return !line.holds(point); });
        if (objections.count(i + 1) != 0) {
            // What the rejected fact means for fractions still counts behind it.
            return require(points.empty());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t mostLines = 8;
    FuzzedDataProvider input(data, size);
    std::vector<Line> lines;
    std::string text;
    while (input.remaining_bytes() > 0 && lines.size() < mostLines) {
        lines.emplace_back(input);
        text += lines.back().text();
    }
    std::istringstream is(text);
    check(lines, dims::readFacts(is));
    return 0;
}
