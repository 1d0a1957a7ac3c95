#include "systems/parameter_value.h"

#include "exchange/values.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace tvtool::systems {

namespace {

using exchange::BaseType;

/// The longest word that is read exactly. With the range of double this bounds the size of numbers.
constexpr std::size_t longestExact = 64;

/// Returns whether a decimal that is out of the range of double is nearly 0.
bool isTiny(std::string_view word) {
    const std::size_t exponent = word.find_first_of("eE");
    return exponent == std::string_view::npos ? word.find_first_of("123456789") > word.find('.')
                                              : word.substr(exponent + 1).starts_with('-');
}

/// Returns whether a word that is a number or INF or NaN is in the range of a floating-point type.
bool isInRange(std::string_view word, BaseType base) {
    const std::optional<double> number = exchange::parseNumber<double>(word);
    if (!number) {
        return isTiny(word);
    }
    return base == BaseType::Float64 || !std::isinf(static_cast<float>(*number)) ||
           std::isinf(*number);
}

bool isHex(std::string_view text) {
    return text.size() % 2 == 0 && std::ranges::all_of(text, [](char c) {
               return std::isxdigit(static_cast<unsigned char>(c)) != 0;
           });
}

} // namespace

ExactValue readExact(std::string_view word) {
    const std::optional<double> nearest = exchange::parseNumber<double>(word);
    const bool isNegative = word.starts_with('-');
    if (!nearest) {
        return {isTiny(word) ? ExactValue::Kind::Number : ExactValue::Kind::Infinite, isNegative,
                0};
    }
    if (std::isnan(*nearest)) {
        return {ExactValue::Kind::NotANumber, false, 0};
    }
    if (std::isinf(*nearest)) {
        return {ExactValue::Kind::Infinite, isNegative, 0};
    }
    return {ExactValue::Kind::Number, isNegative,
            word.size() <= longestExact ? exact::parseDecimal(word) : exact::Number(*nearest)};
}

std::string shownText(const ExactValue& value) {
    switch (value.kind) {
    case ExactValue::Kind::NotANumber:
        return "NaN";
    case ExactValue::Kind::Infinite:
        return value.isNegative ? "-INF" : "INF";
    default:
        return exact::shortestDecimal(value.number).text;
    }
}

bool readBoolean(std::string_view text) {
    const std::string_view word = exchange::trimmed(text);
    return word == "true" || word == "1";
}

bool isParameterValue(std::string_view text, BaseType base) {
    switch (base) {
    case BaseType::Enumeration:
    case BaseType::None:
        return true;
    case BaseType::Binary:
        return isHex(exchange::trimmed(text));
    case BaseType::String:
        return true;
    case BaseType::Float64:
    case BaseType::Float32: {
        const std::string_view word = exchange::trimmed(text);
        return exchange::isValue(word, base) && isInRange(word, base);
    }
    default:
        return exchange::isValue(exchange::trimmed(text), base);
    }
}

std::string joinedValues(std::span<const std::string_view> values) {
    std::string text;
    for (const std::string_view value : values) {
        if (text.size() > text::longestName) {
            break;
        }
        text += text.empty() ? "" : " ";
        text += value.substr(0, text::longestName + 1);
    }
    return text::shortened(text);
}

} // namespace tvtool::systems
