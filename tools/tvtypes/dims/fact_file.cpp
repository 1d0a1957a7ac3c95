#include "dims/fact_file.h"

#include "dims/fact_line.h"
#include "dims/fact_store.h"
#include "dims/reading.h"
#include "files/read_error.h"
#include "text/excerpt.h"
#include "text/quote.h"

#include <fmt/format.h>

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

/// Two expressions of a MiB, and some blanks.
constexpr std::size_t longestLine = std::size_t{4} << 20;

/// The lines of a text, one at a time.
class Lines {
  public:
    explicit Lines(std::istream& is) : is_(is), buffer_(longestLine + 2) {}

    /// False at the end. The line is good until the next one is read.
    bool next(std::string_view& line) {
        is_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        if (is_.bad()) {
            throw files::ReadError("cannot be read");
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
        // A line break is counted and not stored.
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

class FactReader {
  public:
    FactReport read(std::istream& is) {
        Lines lines(is);
        std::string_view line;
        while (report_.lastLine == 0 && lines.next(line)) {
            try {
                if (const std::optional<FactLine> split = splitLine(line)) {
                    take(*split, lines.number());
                }
            } catch (const text::ParseError& error) {
                addFault(lines.number(), line, error.position, error.what());
            }
            if (store_.isExhausted()) {
                addFault(lines.number(), line, 0,
                         "there are more ways between sizes than can be "
                         "searched");
                report_.lastLine = lines.number();
            } else if (report_.faults.size() == mostFaults) {
                report_.lastLine = lines.number();
            }
        }
        std::vector<const TVBlock*> blocks;
        for (const TVBlock& block : blocks_) {
            blocks.push_back(&block);
        }
        report_.facts = store_.statedBy(blocks);
        return std::move(report_);
    }

  private:
    void take(const FactLine& line, std::uint64_t number) {
        const int left = readSide(line.left, number);
        const int right = readSide(line.right, number);
        Fact fact{left, Relation::Equal, right, nullptr, number};
        if (line.sign != Sign::Equal) {
            fact.relation = Relation::Greater;
        }
        if (line.sign == Sign::Less) {
            std::swap(fact.left, fact.right);
        }
        const std::string text =
            fmt::format("{} {} {}", line.left.text, textOf(line.sign), line.right.text);
        if (line.isQuestion) {
            FactStore::Answer answer = store_.ask(fact);
            report_.answers.push_back(
                {number, text, answer.library, answer.all, std::move(answer.reason)});
            return;
        }
        ++report_.stated;
        fact.block = blockOf(line.block, number);
        if (auto objection = store_.state(fact)) {
            report_.objections.push_back({number, text, fact.block->name, objection->isRefused,
                                          std::move(objection->reason)});
        } else if (left == right) {
            report_.notes.push_back({number, "both sides are the same, so this says nothing"});
        }
    }

    /// The id of a side's size. Throws a text::ParseError with the position in the line.
    int readSide(const Side& side, std::uint64_t number) {
        try {
            const Reading reading = readDims(side.text, table_);
            if (!reading.obstacle.empty()) {
                constexpr std::size_t longest = 60;
                report_.notes.push_back(
                    {number, fmt::format("{} stays, at least in part, as it is: {}",
                                         text::shortened(side.text, longest), reading.obstacle)});
            }
            return sizeOf(table_, reading.simplified);
        } catch (const text::ParseError& error) {
            throw text::ParseError(error.what(), side.text, side.position + error.position);
        }
    }

    const TVBlock* blockOf(const std::string& name, std::uint64_t line) {
        if (name.empty()) {
            return &blocks_.emplace_back(TVBlock{{}, line});
        }
        const auto [entry, isNew] = blockOfName_.try_emplace(name, nullptr);
        if (isNew) {
            entry->second = &blocks_.emplace_back(TVBlock{name, line});
        }
        return entry->second;
    }

    void addFault(std::uint64_t number, std::string_view line, std::size_t position,
                  const char* sentence) {
        report_.faults.push_back(
            {number, text::columnOf(line, position), sentence, text::excerptAt(line, position)});
    }

    TVTypeSys::SymbolicDimsTable table_;
    FactStore store_{table_};
    std::deque<TVBlock> blocks_;
    std::unordered_map<std::string, const TVBlock*> blockOfName_;
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
