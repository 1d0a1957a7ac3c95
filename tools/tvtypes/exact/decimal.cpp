#include "exact/decimal.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>

namespace tvtool::exact {

namespace {

constexpr std::size_t longestText = 4000;
constexpr int greatestExponent = 5000;

constexpr int mostDigits = 24;
constexpr int roundedDigits = 17;
// A decimal with more zeros than this ahead of its digits or behind them is given a power of ten.
constexpr int mostZeros = 6;

bool isDigits(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

[[noreturn]] void refuse(std::string_view text, const std::string& reason) {
    throw std::invalid_argument(fmt::format("{} {}", text::quoted(text), reason));
}

/// The digits of a decimal number without its point, and the power of ten that they are to be
/// multiplied by.
struct Digits {
    std::string text;
    int exponent = 0;
};

Digits digitsOf(std::string_view text, std::string_view unsignedText) {
    const std::size_t exponentAt = unsignedText.find_first_of("eE");
    const std::string_view mantissa = unsignedText.substr(0, exponentAt);
    const std::size_t pointAt = mantissa.find('.');
    const std::string_view whole = mantissa.substr(0, pointAt);
    const std::string_view decimals =
        pointAt == std::string_view::npos ? std::string_view() : mantissa.substr(pointAt + 1);
    Digits digits{fmt::format("{}{}", whole, decimals), -static_cast<int>(decimals.size())};
    if (digits.text.empty() || !isDigits(digits.text)) {
        refuse(text, "is not a decimal number");
    }
    if (exponentAt == std::string_view::npos) {
        return digits;
    }
    std::string_view power = unsignedText.substr(exponentAt + 1);
    const bool isNegative = power.starts_with('-');
    if (isNegative || power.starts_with('+')) {
        power.remove_prefix(1);
    }
    if (power.empty() || !isDigits(power)) {
        refuse(text, "is not a decimal number");
    }
    int size = 0;
    const auto error = std::from_chars(power.data(), power.data() + power.size(), size).ec;
    if (error != std::errc() || size > greatestExponent) {
        refuse(text, fmt::format("has a power of ten beyond -{0} to {0}", greatestExponent));
    }
    digits.exponent += isNegative ? -size : size;
    return digits;
}

/// The power of ten of the first digit.
int exponentOf(const Number& size) {
    const double bits =
        static_cast<double>(msb(numerator(size))) - static_cast<double>(msb(denominator(size)));
    const int atLeast = static_cast<int>(std::floor((bits - 1) * std::log10(2.0)));
    return size >= powerOfTen(atLeast + 1) ? atLeast + 1 : atLeast;
}

std::string placed(std::string digits, int exponent) {
    const int count = static_cast<int>(digits.size());
    if (exponent < -mostZeros || exponent >= count + mostZeros) {
        if (count > 1) {
            digits.insert(1, ".");
        }
        return fmt::format("{}e{:+03d}", digits, exponent);
    }
    if (exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    if (exponent + 1 >= count) {
        return digits + std::string(static_cast<std::size_t>(exponent + 1 - count), '0');
    }
    return digits.insert(static_cast<std::size_t>(exponent) + 1, ".");
}

} // namespace

Number parseDecimal(std::string_view text) {
    if (text.size() > longestText) {
        refuse(text, fmt::format("is longer than {} digits", longestText));
    }
    const bool isNegative = text.starts_with('-');
    const Digits digits = digitsOf(text, text.substr(isNegative || text.starts_with('+') ? 1 : 0));
    // A leading 0 would make it octal.
    const std::size_t first = digits.text.find_first_not_of('0');
    if (first == std::string::npos) {
        return 0;
    }
    const Number size = Number(Integer(digits.text.substr(first))) * powerOfTen(digits.exponent);
    return isNegative ? Number(-size) : size;
}

std::string decimalText(const Number& number) {
    if (number == 0) {
        return "0";
    }
    const Number size = abs(number);
    int exponent = exponentOf(size);
    const Number scaled = size * powerOfTen(mostDigits - 1 - exponent);
    Integer digits;
    Integer rest;
    divide_qr(numerator(scaled), denominator(scaled), digits, rest);
    const char* const sign = number < 0 ? "-" : "";
    if (rest == 0) {
        std::string text = digits.str();
        text.erase(text.find_last_not_of('0') + 1);
        return sign + placed(std::move(text), exponent);
    }
    // What has been cut off is more than nothing, so there are no ties.
    const Integer step = numerator(powerOfTen(mostDigits - roundedDigits));
    std::string text = Integer((digits + step / 2) / step).str();
    exponent += static_cast<int>(text.size()) - roundedDigits;
    text.erase(text.find_last_not_of('0') + 1);
    return fmt::format("about {}{}", sign, placed(std::move(text), exponent));
}

} // namespace tvtool::exact
