#include "fmi/values.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace tvtool::fmi {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Reads a number that begins at the first character and ends at the last.
template <class Number>
std::errc readNumber(std::string_view text, Number& number) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return stop == end ? error : std::errc::invalid_argument;
}

template <class Number>
std::optional<Number> parseOne(std::string_view text) {
    const std::string_view word = takeWord(text);
    Number number{};
    return readNumber(word, number) == std::errc() && takeWord(text).empty() ? std::optional(number)
                                                                             : std::nullopt;
}

template <class Integer>
bool isInteger(std::string_view word) {
    Integer number{};
    return readNumber(word, number) == std::errc();
}

bool isReal(std::string_view word) {
    double number = 0;
    const std::errc error = readNumber(word, number);
    return error == std::errc() || error == std::errc::result_out_of_range;
}

bool isBoolean(std::string_view word) {
    return word == "true" || word == "false" || word == "1" || word == "0";
}

} // namespace

std::optional<std::int32_t> parseInt32(std::string_view text) {
    return parseOne<std::int32_t>(text);
}

std::optional<std::uint32_t> parseUInt32(std::string_view text) {
    return parseOne<std::uint32_t>(text);
}

std::optional<std::uint64_t> parseUInt64(std::string_view text) {
    return parseOne<std::uint64_t>(text);
}

std::optional<double> parseReal(std::string_view text) {
    const std::optional<double> number = parseOne<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::string_view takeWord(std::string_view& text) {
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        text = {};
        return {};
    }
    text.remove_prefix(begin);
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

bool isValue(std::string_view word, BaseType base) {
    switch (base) {
    case BaseType::Float64:
    case BaseType::Float32:
        return isReal(word);
    case BaseType::Int8:
        return isInteger<std::int8_t>(word);
    case BaseType::UInt8:
        return isInteger<std::uint8_t>(word);
    case BaseType::Int16:
        return isInteger<std::int16_t>(word);
    case BaseType::UInt16:
        return isInteger<std::uint16_t>(word);
    case BaseType::Int32:
        return isInteger<std::int32_t>(word);
    case BaseType::UInt32:
        return isInteger<std::uint32_t>(word);
    case BaseType::Int64:
    case BaseType::Enumeration:
        return isInteger<std::int64_t>(word);
    case BaseType::UInt64:
        return isInteger<std::uint64_t>(word);
    case BaseType::Boolean:
        return isBoolean(word);
    case BaseType::String:
    case BaseType::Binary:
    case BaseType::Clock:
    case BaseType::None:
        break;
    }
    return true;
}

} // namespace tvtool::fmi
