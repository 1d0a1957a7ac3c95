#include "exchange/values.h"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <type_traits>

namespace tvtool::exchange {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Returns whether infinities and NaN are written as in XML, which has no others: INF, -INF, NaN.
bool isWrittenAsInXml(std::string_view word) {
    const std::size_t first = word.starts_with('-') || word.starts_with('+') ? 1 : 0;
    return first >= word.size() || std::isalpha(static_cast<unsigned char>(word[first])) == 0 ||
           word == "INF" || word == "-INF" || word == "NaN";
}

/// Parses a number that takes the whole word.
template <class Number>
std::errc readNumber(std::string_view word, Number& number) {
    if (std::is_floating_point_v<Number> && !isWrittenAsInXml(word)) {
        return std::errc::invalid_argument;
    }
    if (word.starts_with('+') && !word.starts_with("+-")) {
        word.remove_prefix(1);
    }
    if (std::is_unsigned_v<Number> && word.size() > 1 && word.front() == '-' &&
        word.find_first_not_of('0', 1) == std::string_view::npos) {
        word.remove_prefix(1);
    }
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return stop == end ? error : std::errc::invalid_argument;
}

template <class Number>
bool isNumber(std::string_view word) {
    Number number{};
    const std::errc error = readNumber(word, number);
    return error == std::errc() ||
           (std::is_floating_point_v<Number> && error == std::errc::result_out_of_range);
}

bool isBoolean(std::string_view word) {
    return word == "true" || word == "false" || word == "1" || word == "0";
}

bool isText(std::string_view /*word*/) { return true; }

/// The check of each base type, in the order of BaseType.
constexpr std::array<bool (*)(std::string_view), baseTypeCount + 1> checks{isNumber<double>,
                                                                           isNumber<double>,
                                                                           isNumber<std::int8_t>,
                                                                           isNumber<std::uint8_t>,
                                                                           isNumber<std::int16_t>,
                                                                           isNumber<std::uint16_t>,
                                                                           isNumber<std::int32_t>,
                                                                           isNumber<std::uint32_t>,
                                                                           isNumber<std::int64_t>,
                                                                           isNumber<std::uint64_t>,
                                                                           isBoolean,
                                                                           isText,
                                                                           isText,
                                                                           isText,
                                                                           isNumber<std::int64_t>,
                                                                           isText};

} // namespace

template <class Number>
std::optional<Number> parseNumber(std::string_view text) {
    const std::string_view word = takeWord(text);
    Number number{};
    const bool isRead = readNumber(word, number) == std::errc() && takeWord(text).empty();
    return isRead ? std::optional(number) : std::nullopt;
}

template std::optional<std::int32_t> parseNumber(std::string_view);
template std::optional<std::int64_t> parseNumber(std::string_view);
template std::optional<std::uint32_t> parseNumber(std::string_view);
template std::optional<std::uint64_t> parseNumber(std::string_view);
template std::optional<double> parseNumber(std::string_view);

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
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
    return checks[static_cast<std::size_t>(base)](word);
}

} // namespace tvtool::exchange
