#include "conversion/summary.h"

#include "conversion/others.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <utility>

namespace convbench {

namespace {

using Belongs = bool (*)(const Case&);

struct Row {
    const char* label;
    Belongs belongs;
};

bool plain(const Case& c) { return c.shape == Shape::Real && !c.checked && c.data != Data::Far; }
bool between(const Case& c, bool isFloat) {
    return c.cell.dst != booleanId && c.cell.from().isFloat == isFloat &&
           c.cell.to().isFloat == isFloat && c.cell.src != c.cell.dst;
}
bool wraps(const Case& c) { return c.cell.overflow == FXP_OVERFLOW_WRAP; }
bool widens(const Case& c) { return c.cell.to().size > c.cell.from().size; }
bool fromByteToSingle(const Case& c) {
    return c.cell.dst == 1 && (c.cell.src == 3 || c.cell.src == booleanId);
}
bool rounds(const Case& c, int src, bool wrap) {
    return c.cell.fromFloatToInteger() && c.cell.src == src && wraps(c) == wrap;
}
bool saturates(const Case& c, int src, bool to32Bits) {
    return rounds(c, src, false) && (c.cell.to().size == 4) == to32Bits;
}

// Classes of pairs, each pair in one. They contain only plain cases: real, not checked.
constexpr Row classes[] = {
    {"the same type", [](const Case& c) { return c.cell.src == c.cell.dst; }},
    {"integer, wrap: narrowing and same width",
     [](const Case& c) { return between(c, false) && wraps(c) && !widens(c); }},
    {"integer, wrap: widening",
     [](const Case& c) { return between(c, false) && wraps(c) && widens(c); }},
    {"integer, saturate", [](const Case& c) { return between(c, false) && !wraps(c); }},
    {"uint8 and boolean to single", fromByteToSingle},
    {"integer to floating point, the others",
     [](const Case& c) {
         return !c.cell.from().isFloat && c.cell.to().isFloat && !fromByteToSingle(c);
     }},
    {"double to single and back", [](const Case& c) { return between(c, true); }},
    {"double to 8 and 16 bits, saturate", [](const Case& c) { return saturates(c, 0, false); }},
    {"double to 32 bits, saturate", [](const Case& c) { return saturates(c, 0, true); }},
    {"single to 8 and 16 bits, saturate", [](const Case& c) { return saturates(c, 1, false); }},
    {"single to 32 bits, saturate", [](const Case& c) { return saturates(c, 1, true); }},
    {"double to integer, wrap", [](const Case& c) { return rounds(c, 0, true); }},
    {"single to integer, wrap", [](const Case& c) { return rounds(c, 1, true); }},
    {"to boolean",
     [](const Case& c) { return c.cell.dst == booleanId && c.cell.src != booleanId; }},
};

// Groups of the other cases.
constexpr Row otherGroups[] = {
    {"floating point far outside the integers",
     [](const Case& c) { return !c.checked && c.data == Data::Far; }},
    {"complex to complex", [](const Case& c) { return !c.checked && c.shape == Shape::Complex; }},
    {"real to complex",
     [](const Case& c) { return !c.checked && c.shape == Shape::RealToComplex; }},
    {"complex to real",
     [](const Case& c) { return !c.checked && c.shape == Shape::ComplexToReal; }},
    {"scalar to vector", [](const Case& c) { return !c.checked && c.shape == Shape::Scalar; }},
};

bool isReal(const Case& c) { return c.shape == Shape::Real; }

struct RatioRow {
    const char* label;
    const char* counter;
    Belongs belongs;
};

constexpr RatioRow ownRatios[] = {
    {"ties away from zero to toward negative infinity", "to_floor",
     [](const Case& c) { return plain(c) && c.cell.rounding == FXP_ROUND_ROUND; }},
    {"ties toward positive infinity to toward negative infinity", "to_floor",
     [](const Case& c) { return plain(c) && c.cell.rounding == FXP_ROUND_NEAR; }},
    {"checked to unchecked: real, kept", "to_unchecked",
     [](const Case& c) { return isReal(c) && c.data == Data::Kept; }},
    {"checked to unchecked: real, lossy", "to_unchecked",
     [](const Case& c) { return isReal(c) && c.data == Data::Lossy; }},
    {"checked to unchecked: real, far", "to_unchecked",
     [](const Case& c) { return isReal(c) && c.data == Data::Far; }},
    {"checked to unchecked: the other shapes", "to_unchecked",
     [](const Case& c) { return !isReal(c); }},
    {"a part of complex to complex to a real element", "to_real",
     [](const Case& c) { return !c.checked; }},
};

/// Geometric mean and maximum of a ratio over results.
class Figure {
  public:
    void add(const Result& result, const std::string& counter) {
        const auto found = result.ratios.find(counter);
        if (found == result.ratios.end()) {
            return;
        }
        logarithms_ += std::log(found->second);
        ++count_;
        if (found->second > worst_) {
            worst_ = found->second;
            worstCase_ = &result.timed;
        }
    }
    int count() const { return count_; }
    double mean() const { return std::exp(logarithms_ / count_); }
    double worst() const { return worst_; }
    const Case* worstCase() const { return worstCase_; }

  private:
    double logarithms_ = 0;
    int count_ = 0;
    double worst_ = 0;
    const Case* worstCase_ = nullptr;
};

class Table {
  public:
    Table(std::ostream& out, const std::vector<Result>& results, const char* heading,
          std::vector<std::string> counters)
        : out_(out), results_(results), heading_(heading), counters_(std::move(counters)) {}

    /// Writes a row, unless no case of it was run.
    template <class Accepts>
    void row(const std::string& label, const std::vector<std::string>& counters,
             const Accepts& accepts) {
        std::vector<Figure> figures;
        for (const std::size_t count : counts) {
            for (const std::string& counter : counters) {
                Figure& figure = figures.emplace_back();
                for (const Result& result : results_) {
                    if (result.timed.count == count && accepts(result.timed)) {
                        figure.add(result, counter);
                    }
                }
            }
        }
        int cases = 0;
        const Figure* worst = &figures.front();
        for (const Figure& figure : figures) {
            cases = std::max(cases, figure.count());
            worst = figure.worst() > worst->worst() ? &figure : worst;
        }
        if (cases == 0) {
            return;
        }
        writeHead();
        out_ << "| " << label << " | " << cases << " |" << std::fixed << std::setprecision(2);
        for (const Figure& figure : figures) {
            if (figure.count() == 0) {
                out_ << " | |";
            } else {
                out_ << ' ' << figure.mean() << " | " << figure.worst() << " |";
            }
        }
        out_ << " `" << worst->worstCase()->name() << "` |\n";
    }

    template <class Accepts>
    void row(const std::string& label, const Accepts& accepts) {
        row(label, counters_, accepts);
    }

  private:
    void writeHead() {
        if (std::exchange(hasHead_, true)) {
            return;
        }
        out_ << "\n| " << heading_ << " | cases |";
        for (const std::size_t count : counts) {
            for (const std::string& counter : counters_) {
                const char* shown = counters_.size() > 1 ? counter.c_str() : "ratio";
                out_ << ' ' << count << ": " << shown << " | worst |";
            }
        }
        out_ << " worst case |\n|:--|--:|";
        for (std::size_t i = 0; i < 2 * counts.size() * counters_.size(); ++i) {
            out_ << "--:|";
        }
        out_ << ":--|\n";
    }

    std::ostream& out_;
    const std::vector<Result>& results_;
    const char* heading_;
    std::vector<std::string> counters_;
    bool hasHead_ = false;
};

} // namespace

void writeSummary(std::ostream& out, const std::vector<Result>& results) {
    Table copies(out, results, "Time, to copying", {"copy_half", "copy_max"});
    for (const Row& row : classes) {
        copies.row(row.label, [&](const Case& c) { return plain(c) && row.belongs(c); });
    }
    for (const Row& row : otherGroups) {
        copies.row(row.label, row.belongs);
    }

    Table own(out, results, "Time, to the library's own", {""});
    for (const RatioRow& row : ownRatios) {
        own.row(row.label, {row.counter}, row.belongs);
    }

    Table beside(out, results, "Time, to another library's", {""});
    for (const Other& other : others()) {
        const std::string counter = std::string("to_") + other.name;
        for (const Row& row : classes) {
            beside.row(std::string(other.name) + ": " + row.label, {counter}, row.belongs);
        }
    }
}

} // namespace convbench
