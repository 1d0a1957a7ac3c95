#include "dims/fact_lines.h"

#include "dims/names.h"
#include "exact/number.h"
#include "files/read_error.h"
#include "files/stream_errors.h"
#include "text/parse_error.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>

namespace tvtool::dims {

namespace {

/// Space for two expressions of 1 MiB, and blanks.
constexpr std::size_t longestLine = std::size_t{4} << 20;

/// Returns the text from one position to another without the blanks around it.
Side sideAt(std::string_view line, std::size_t begin, std::size_t end) {
    constexpr std::string_view blanks = " \t\r\v\f";
    const std::size_t first = std::min(line.find_first_not_of(blanks, begin), end);
    const std::string_view text = line.substr(first, end - first);
    return {std::string(text.substr(0, text.find_last_not_of(blanks) + 1)), first};
}

/// Returns how to write a relation >= or <= of whole numbers.
std::string strictText(const FactLine& line) {
    constexpr std::size_t longest = 60;
    const bool isGreater = line.relation == ">=";
    const std::string& right = line.right.text;
    const bool isNumber =
        right.find_first_not_of("0123456789") == std::string::npos && right.size() <= longest;
    const std::string bound =
        isNumber ? exact::Integer(exact::Integer(right.substr(
                                      std::min(right.find_first_not_of('0'), right.size() - 1))) +
                                  (isGreater ? -1 : 1))
                       .str()
                 : fmt::format("{} {} 1", text::shortened(right, longest), isGreater ? '-' : '+');
    return fmt::format("there is no relation {}; for whole numbers, write {} {} {}", line.relation,
                       text::shortened(line.left.text, longest), isGreater ? '>' : '<', bound);
}

} // namespace

FactLines::FactLines(std::istream& is) : is_(is), buffer_(longestLine + 2) {
    files::throwOnFailure(is);
}

bool FactLines::next(std::string_view& line) {
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
    if (constexpr std::string_view mark = "\xEF\xBB\xBF"; number_ == 1 && line.starts_with(mark)) {
        line.remove_prefix(mark.size());
    }
    if (const std::size_t zero = line.find('\0'); zero != std::string_view::npos) {
        throw files::ReadError("is no text: there is a byte of value 0", number_, zero + 1);
    }
    return true;
}

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
    split.left = sideAt(text, 0, begin);
    split.right = sideAt(text, behind, end);
    check(!split.left.text.empty(), "the left side is missing", begin);
    check(!split.right.text.empty(), "the right side is missing", end);
    if (split.relation == ">=" || split.relation == "<=") {
        throw text::ParseError(strictText(split), std::string(line), begin);
    }
    check(split.relation == "==" || split.relation == ">" || split.relation == "<",
          "there is no such relation; it is ==, > or <", begin);
    const std::size_t another = plain.find_first_of(signs, behind);
    check(another == std::string_view::npos, "a line has one relation", another);
    return split;
}

bool isSetting(std::string_view line, std::string_view text) {
    return sideAt(line, 0, std::min(line.find('#'), line.size())).text == text;
}

} // namespace tvtool::dims
