#include "dims/fact_line.h"

#include <algorithm>

namespace tvtool::dims {

namespace {

constexpr std::string_view blanks = " \t\r\v\f";
constexpr std::string_view signs = "=<>!";

/// What stands from one place to another, without blanks around it.
Side sideAt(std::string_view line, std::size_t begin, std::size_t end) {
    const std::size_t first = std::min(line.find_first_not_of(blanks, begin), end);
    const std::string_view text = line.substr(first, end - first);
    return {std::string(text.substr(0, text.find_last_not_of(blanks) + 1)), first};
}

Sign parseSign(std::string_view text, std::string_view line, std::size_t position) {
    if (text == "==") {
        return Sign::Equal;
    }
    if (text == ">") {
        return Sign::Greater;
    }
    if (text == "<") {
        return Sign::Less;
    }
    throw text::ParseError("there is no such relation; it is ==, > or <", std::string(line),
                           position);
}

} // namespace

const char* textOf(Sign sign) {
    return sign == Sign::Equal ? "==" : sign == Sign::Greater ? ">" : "<";
}

std::optional<FactLine> splitLine(std::string_view line) {
    const std::size_t hash = std::min(line.find('#'), line.size());
    const Side fact = sideAt(line, 0, hash);
    if (fact.text.empty()) {
        return std::nullopt;
    }
    FactLine split;
    split.isQuestion = fact.text.back() == '?';
    split.block = hash < line.size() ? sideAt(line, hash + 1, line.size()).text : "";

    const std::size_t end = fact.position + fact.text.size() - (split.isQuestion ? 1 : 0);
    const std::string_view text = line.substr(0, end);
    const std::size_t sign = text.find_first_of(signs);
    if (sign == std::string_view::npos) {
        throw text::ParseError("a relation is missing: ==, > or <", std::string(line), end);
    }
    const std::size_t afterSign = std::min(text.find_first_not_of(signs, sign), end);
    split.sign = parseSign(text.substr(sign, afterSign - sign), line, sign);
    split.left = sideAt(text, 0, sign);
    split.right = sideAt(text, afterSign, end);
    if (split.left.text.empty()) {
        throw text::ParseError("the left side is missing", std::string(line), sign);
    }
    if (split.right.text.empty()) {
        throw text::ParseError("the right side is missing", std::string(line), end);
    }
    if (const std::size_t more = text.find_first_of(signs, afterSign);
        more != std::string_view::npos) {
        throw text::ParseError("a line has one relation", std::string(line), more);
    }
    return split;
}

} // namespace tvtool::dims
