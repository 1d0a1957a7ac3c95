#include "dims/fact_file.h"

#include "dims/fact_lines.h"
#include "dims/fact_list.h"
#include "dims/fact_store.h"
#include "dims/names.h"
#include "dims/reading.h"
#include "files/read_error.h"
#include "files/stream_errors.h"
#include "text/excerpt.h"
#include "text/parse_error.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::dims {

namespace {

constexpr std::size_t mostFaults = 20;

/// The longest text of a size in a note, in bytes.
constexpr std::size_t longest = 60;

class FactReader {
  public:
    FactReport read(std::istream& is) {
        if (beginsLikeList(is)) {
            readList(is);
        } else {
            readLines(is);
        }
        report_.facts = store_->statedBy(blocks_);
        report_.undecided = store_->undecidedLines();
        addUndecidedNote();
        return std::move(report_);
    }

  private:
    void readLines(std::istream& is) {
        FactLines lines(is);
        std::string_view line;
        while (!report_.lastLine && lines.next(line)) {
            processLine(line, {}, lines.number());
        }
    }

    /// Reads the facts of a report in JSON. Their lines are their places in the list, from 1.
    void readList(std::istream& is) {
        std::uint64_t number = 0;
        const FactList list = readFactList(is);
        if (!list.areWhole) {
            allowAnySizes();
        }
        for (const ListedFact& fact : list.facts) {
            ++number;
            for (std::size_t i = 0; i < fact.blocks.size() && !report_.lastLine; ++i) {
                processLine(fact.text, fact.blocks[i], number);
            }
        }
    }

    /// \param block what states the fact if the line names no block
    void processLine(std::string_view line, const std::string& block, std::uint64_t number) {
        try {
            if (applySetting(line)) {
                return;
            }
            if (std::optional<FactLine> split = splitLine(line)) {
                split->block = split->block.empty() ? block : split->block;
                process(*split, number);
            }
        } catch (const text::ParseError& error) {
            addFault(number, line, error.position, error.what());
        }
        if (report_.faults.size() == mostFaults) {
            report_.lastLine = number;
        }
    }

    /// Returns whether a line is a setting, and applies it. Throws a text::ParseError.
    bool applySetting(std::string_view line) {
        if (!isSetting(line, "integer off")) {
            return false;
        }
        if (report_.stated > 0 || !report_.answers.empty()) {
            throw text::ParseError("\"integer off\" comes before the first fact", std::string(line),
                                   line.find_first_not_of(" \t"));
        }
        allowAnySizes();
        return true;
    }

    void allowAnySizes() {
        report_.areWhole = false;
        store_.emplace(table_, Sizes::Any);
    }

    void process(const FactLine& line, std::uint64_t number) {
        const RegisteredSide leftSide = registerSide(line.left, number);
        const RegisteredSide rightSide = registerSide(line.right, number);
        const int left = leftSide.size;
        const int right = rightSide.size;
        const bool isCompared = compareShapes(leftSide, rightSide, number);
        const std::string text =
            fmt::format("{} {} {}", line.left.text, line.relation, line.right.text);
        Fact fact{left, line.relation == "==" ? Relation::Equal : Relation::Greater, right, nullptr,
                  number};
        if (line.relation == "<") {
            std::swap(fact.left, fact.right);
        }
        if (line.isQuestion) {
            report_.answers.push_back(store_->ask(fact));
            report_.answers.back().text = text;
            return;
        }
        ++report_.stated;
        fact.block = blockNamed(line.block, number);
        auto objection = store_->state(fact);
        if (objection && objection->isDoubtful) {
            addNote(number, "the library refuses this, by {}", objection->reason.text());
        } else if (objection) {
            objection->text = text;
            report_.objections.push_back(*std::move(objection));
        } else if (left == right && !isCompared) {
            addNote(number, "both sides are the same, so this says nothing");
        }
    }

    /// Throws a text::ParseError for the names of sizes that are not known yet.
    static void refusePlaceholders(const std::string& text) {
        const EncodedText encoded = encodeNames(text);
        for (const char* const name : {"INHERIT", "NOSYMBOLIC"}) {
            const std::size_t position = findName(encoded.text, name);
            if (position != std::string::npos) {
                throw text::ParseError(fmt::format("{} stands for a size that is not known yet, so "
                                                   "there are no facts about it",
                                                   name),
                                       text, encoded.givenPosition(position));
            }
        }
    }

    struct RegisteredSide {
        int dims = 0; ///< without lists inside lists
        int size = 0;
    };

    /// Registers a side. Throws a text::ParseError with the position in the line.
    RegisteredSide registerSide(const Side& side, std::uint64_t number) {
        try {
            const RegisteredDims dims = registerDims(side.text, table_);
            refusePlaceholders(side.text);
            if (dims.isDivisionByZero) {
                throw text::ParseError(dims.obstacle, side.text, 0);
            }
            if (!dims.obstacle.empty()) {
                addNote(number, "{} stays, at least in part, as it is: {}",
                        text::shortened(side.text, longest), dims.obstacle);
            }
            const int flat = flattened(table_, dims.simplified);
            if (flat != dims.simplified) {
                addNote(number, "{} is read as {}", sizeText(dims.simplified), sizeText(flat));
            }
            const int size = sizeOf(table_, flat);
            if (const std::optional<int> divisor = store_->namedDivisor(size)) {
                addNote(number, "the divisor {0} is multiplied out, if {0} is not 0",
                        sizeText(*divisor));
            }
            return {flat, size};
        } catch (const text::ParseError& error) {
            throw text::ParseError(error.what(), side.text, side.position + error.position);
        }
    }

    /// Adds a note if lists of different shapes are compared, and returns whether they are.
    bool compareShapes(const RegisteredSide& left, const RegisteredSide& right,
                       std::uint64_t number) {
        const auto isList = [](const RegisteredSide& side) { return side.dims != side.size; };
        if (left.dims == right.dims || (!isList(left) && !isList(right))) {
            return false;
        }
        if (left.size == right.size) {
            addNote(number, "{} and {} are different shapes, but both have {} elements",
                    sizeText(left.dims), sizeText(right.dims), sizeText(left.size));
        } else {
            addNote(number, "lists are compared by their numbers of elements, {} and {}",
                    sizeText(left.size), sizeText(right.size));
        }
        return true;
    }

    template <class... Arguments>
    void addNote(std::uint64_t number, fmt::format_string<Arguments...> format,
                 Arguments&&... arguments) {
        DimsNote note{number, fmt::format(format, std::forward<Arguments>(arguments)...)};
        // Both sides of a fact can have the same divisor.
        if (report_.notes.empty() || report_.notes.back() != note) {
            report_.notes.push_back(std::move(note));
        }
    }

    /// Adds a note at the first line that was not decided.
    void addUndecidedNote() {
        constexpr std::size_t mostLines = 10;
        const std::vector<std::uint64_t>& lines = report_.undecided;
        if (lines.size() == 1) {
            addNote(lines.front(), "this takes too much work, and is not decided");
        } else if (!lines.empty()) {
            const std::size_t shown = std::min(lines.size(), mostLines);
            addNote(
                lines.front(), "lines {}{} take too much work, and are not decided",
                fmt::join(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(shown), ", "),
                lines.size() > shown ? fmt::format(" and {} more", lines.size() - shown) : "");
        }
    }

    std::string sizeText(int id) {
        return text::shortened(decodeNames(table_.getDisplayString(id)), longest);
    }

    const TVBlock* blockNamed(const std::string& name, std::uint64_t line) {
        if (name.empty()) {
            return &blocks_.emplace_back(TVBlock{{}, line});
        }
        const TVBlock*& block = namedBlocks_[name];
        if (block == nullptr) {
            block = &blocks_.emplace_back(TVBlock{name, line});
        }
        return block;
    }

    void addFault(std::uint64_t number, std::string_view line, std::size_t position,
                  const char* sentence) {
        report_.faults.push_back(
            {number, text::columnOf(line, position), sentence, text::excerptAt(line, position)});
    }

    TVTypeSys::SymbolicDimsTable table_;
    std::optional<FactStore> store_{std::in_place, table_};
    std::deque<TVBlock> blocks_; ///< with stable addresses
    std::unordered_map<std::string, const TVBlock*> namedBlocks_;
    FactReport report_;
};

} // namespace

FactReport readFacts(std::istream& is) { return FactReader().read(is); }

FactReport readFactFile(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw files::ReadError("is a directory, not a file of facts");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw files::ReadError("cannot be opened: " + std::generic_category().message(errno));
    }
    FactReport report = readFacts(file);
    report.file = path;
    return report;
}

} // namespace tvtool::dims
