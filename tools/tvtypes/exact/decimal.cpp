#include "exact/decimal.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace tvtool::exact {

namespace {

constexpr std::size_t longestText = 4000;
constexpr int greatestExponent = 5000;
constexpr int exponentLimit = 1'000'000'000;

constexpr int mostDigits = 24;
constexpr int roundedDigits = 17;
// With more zeros than this before or after the digits, a decimal is written with a power of ten.
constexpr int mostZeros = 6;

bool isDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Returns the power of ten of the first digit.
int leadingExponent(const Number& size) {
    const double bits =
        static_cast<double>(msb(numerator(size))) - static_cast<double>(msb(denominator(size)));
    const int atLeast = static_cast<int>(std::floor((bits - 1) * std::log10(2.0)));
    return size >= powerOfTen(atLeast + 1) ? atLeast + 1 : atLeast;
}

/// Returns digits with a point, zeros or a power of ten; `exponent` is that of the first digit.
std::string decimalNotation(std::string digits, int exponent) {
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

std::optional<DecimalParts> splitDecimal(std::string_view text) {
    DecimalParts parts;
    const std::size_t mantissaEnd = std::min(text.find_first_of("eE"), text.size());
    std::string digits(text.substr(0, mantissaEnd));
    if (const std::size_t point = digits.find('.'); point != std::string::npos) {
        parts.decimals = static_cast<int>(digits.size() - point - 1);
        digits.erase(point, 1);
    }
    if (mantissaEnd < text.size()) {
        std::string_view exponent = text.substr(mantissaEnd + 1);
        const bool isNegative = exponent.starts_with('-');
        exponent.remove_prefix(isNegative || exponent.starts_with('+') ? 1 : 0);
        if (!isDigits(exponent)) {
            return std::nullopt;
        }
        int size = exponentLimit;
        std::from_chars(exponent.data(), exponent.data() + exponent.size(), size);
        size = std::min(size, exponentLimit);
        parts.exponent = isNegative ? -size : size;
    }
    if (!isDigits(digits)) {
        return std::nullopt;
    }
    // With a leading zero the number would be read as octal.
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    parts.digits = Integer(digits);
    return parts;
}

Number parseDecimal(std::string_view text) {
    const auto fail = [text](const std::string& reason) {
        throw std::invalid_argument(fmt::format("{} {}", text::quoted(text), reason));
    };
    if (text.size() > longestText) {
        fail(fmt::format("is longer than {} digits", longestText));
    }
    const bool isNegative = text.starts_with('-');
    const auto parts = splitDecimal(text.substr(isNegative || text.starts_with('+') ? 1 : 0));
    if (!parts) {
        fail("is not a decimal number");
    }
    if (std::abs(parts->exponent) > greatestExponent) {
        fail(fmt::format("has a power of ten beyond -{0} to {0}", greatestExponent));
    }
    const Number size = Number(parts->digits) * powerOfTen(parts->exponent - parts->decimals);
    return isNegative ? Number(-size) : size;
}

std::string decimalText(const Number& number) {
    if (number == 0) {
        return "0";
    }
    const Number size = abs(number);
    int exponent = leadingExponent(size);
    const Number scaled = size * powerOfTen(mostDigits - 1 - exponent);
    Integer digits;
    Integer rest;
    divide_qr(numerator(scaled), denominator(scaled), digits, rest);
    const char* const sign = number < 0 ? "-" : "";
    if (rest == 0) {
        std::string text = digits.str();
        text.erase(text.find_last_not_of('0') + 1);
        return sign + decimalNotation(std::move(text), exponent);
    }
    // The truncated rest is not 0, so there are no ties.
    const Integer step = numerator(powerOfTen(mostDigits - roundedDigits));
    std::string text = Integer((digits + step / 2) / step).str();
    exponent += static_cast<int>(text.size()) - roundedDigits;
    text.erase(text.find_last_not_of('0') + 1);
    return fmt::format("about {}{}", sign, decimalNotation(std::move(text), exponent));
}

} // namespace tvtool::exact
