#include "dims/fact_file.h"

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

/// Room for two expressions of 1 MiB, and blanks.
constexpr std::size_t longestLine = std::size_t{4} << 20;

/// Reads the lines of a text one at a time.
class Lines {
  public:
    explicit Lines(std::istream& is) : is_(is), buffer_(longestLine + 2) {
        files::throwOnFailure(is);
    }

    /// Returns false at the end. The line is valid until the next call.
    bool next(std::string_view& line) {
        try {
            is_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        } catch (const std::ios_base::failure& failure) {
            throw files::ReadError(files::failureText(failure));
        }
        const auto count = static_cast<std::size_t>(is_.gcount());
        if (is_.fail() && count == 0) {
            return false;
        }
        ++number_;
        if (is_.fail()) {
            throw files::ReadError(fmt::format("the line is longer than {} MiB", longestLine >> 20),
                                   number_, longestLine + 1);
        }
        // gcount() includes the line break, which is not stored.
        line = {buffer_.data(), is_.eof() ? count : count - 1};
        if (constexpr std::string_view mark = "\xEF\xBB\xBF";
            number_ == 1 && line.starts_with(mark)) {
            line.remove_prefix(mark.size());
        }
        if (const std::size_t zero = line.find('\0'); zero != std::string_view::npos) {
            throw files::ReadError("is no text: there is a byte of value 0", number_, zero + 1);
        }
        return true;
    }

    std::uint64_t number() const { return number_; }

  private:
    std::istream& is_;
    std::vector<char> buffer_;
    std::uint64_t number_ = 0;
};

struct Side {
    std::string text;
    std::size_t position = 0; ///< in the line
};

struct FactLine {
    Side left;
    std::string_view relation; ///< "==", ">" or "<"
    Side right;
    bool isQuestion = false;
    std::string block; ///< empty if the line names none
};

/// Returns the text from one position to another without the blanks around it.
Side sideAt(std::string_view line, std::size_t begin, std::size_t end) {
    constexpr std::string_view blanks = " \t\r\v\f";
    const std::size_t first = std::min(line.find_first_not_of(blanks, begin), end);
    const std::string_view text = line.substr(first, end - first);
    return {std::string(text.substr(0, text.find_last_not_of(blanks) + 1)), first};
}

/// Splits a line; empty for a blank line and a comment. Throws a text::ParseError.
std::optional<FactLine> splitLine(std::string_view line) {
    const auto check = [line](bool isValid, const char* sentence, std::size_t position) {
        if (!isValid) {
            throw text::ParseError(sentence, std::string(line), position);
        }
    };
    const std::string masked = withoutQuotedNames(line);
    const std::size_t hash = std::min(masked.find('#'), line.size());
    const Side fact = sideAt(line, 0, hash);
    if (fact.text.empty()) {
        return std::nullopt;
    }
    FactLine split;
    split.isQuestion = fact.text.back() == '?';
    split.block = hash < line.size() ? sideAt(line, hash + 1, line.size()).text : "";

    constexpr std::string_view signs = "=<>!";
    const std::size_t end = fact.position + fact.text.size() - (split.isQuestion ? 1 : 0);
    const std::string_view text = line.substr(0, end);
    const std::string_view plain = std::string_view(masked).substr(0, end);
    const std::size_t begin = plain.find_first_of(signs);
    check(begin != std::string_view::npos, "a relation is missing: ==, > or <", end);
    const std::size_t behind = std::min(plain.find_first_not_of(signs, begin), end);
    split.relation = text.substr(begin, behind - begin);
    check(split.relation == "==" || split.relation == ">" || split.relation == "<",
          "there is no such relation; it is ==, > or <", begin);
    split.left = sideAt(text, 0, begin);
    split.right = sideAt(text, behind, end);
    check(!split.left.text.empty(), "the left side is missing", begin);
    check(!split.right.text.empty(), "the right side is missing", end);
    const std::size_t another = plain.find_first_of(signs, behind);
    check(another == std::string_view::npos, "a line has one relation", another);
    return split;
}

class FactReader {
  public:
    FactReport read(std::istream& is) {
        if (beginsLikeList(is)) {
            readList(is);
        } else {
            readLines(is);
        }
        report_.facts = store_.statedBy(blocks_);
        return std::move(report_);
    }

  private:
    void readLines(std::istream& is) {
        Lines lines(is);
        std::string_view line;
        while (!report_.lastLine && lines.next(line)) {
            processLine(line, {}, lines.number());
        }
    }

    /// Reads the facts of a report in JSON. Their lines are their places in the list, from 1.
    void readList(std::istream& is) {
        std::uint64_t number = 0;
        for (const ListedFact& fact : readFactList(is)) {
            ++number;
            for (std::size_t i = 0; i < fact.blocks.size() && !report_.lastLine; ++i) {
                processLine(fact.text, fact.blocks[i], number);
            }
        }
    }

    /// \param block what states the fact if the line names no block
    void processLine(std::string_view line, const std::string& block, std::uint64_t number) {
        try {
            if (std::optional<FactLine> split = splitLine(line)) {
                split->block = split->block.empty() ? block : split->block;
                process(*split, number);
            }
        } catch (const text::ParseError& error) {
            addFault(number, line, error.position, error.what());
        }
        if (store_.isExhausted()) {
            addFault(number, line, 0, "there are more ways between sizes than can be searched");
        }
        if (store_.isExhausted() || report_.faults.size() == mostFaults) {
            report_.lastLine = number;
        }
    }

    void process(const FactLine& line, std::uint64_t number) {
        const int left = registerSide(line.left, number);
        const int right = registerSide(line.right, number);
        const std::string text =
            fmt::format("{} {} {}", line.left.text, line.relation, line.right.text);
        Fact fact{left, line.relation == "==" ? Relation::Equal : Relation::Greater, right, nullptr,
                  number};
        if (line.relation == "<") {
            std::swap(fact.left, fact.right);
        }
        if (line.isQuestion) {
            report_.answers.push_back(store_.ask(fact));
            report_.answers.back().text = text;
            return;
        }
        ++report_.stated;
        fact.block = blockNamed(line.block, number);
        if (auto objection = store_.state(fact)) {
            objection->text = text;
            report_.objections.push_back(*std::move(objection));
        } else if (left == right) {
            report_.notes.push_back({number, "both sides are the same, so this says nothing"});
        }
    }

    /// Returns the id of a side's size. Throws a text::ParseError with the position in the line.
    int registerSide(const Side& side, std::uint64_t number) {
        try {
            const RegisteredDims dims = registerDims(side.text, table_);
            if (!dims.obstacle.empty()) {
                constexpr std::size_t longest = 60;
                report_.notes.push_back(
                    {number, fmt::format("{} stays, at least in part, as it is: {}",
                                         text::shortened(side.text, longest), dims.obstacle)});
            }
            return sizeOf(table_, dims.simplified);
        } catch (const text::ParseError& error) {
            throw text::ParseError(error.what(), side.text, side.position + error.position);
        }
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
    FactStore store_{table_};
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
