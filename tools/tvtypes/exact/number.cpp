#include "exact/number.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <utility>

namespace tvtool::exact {

namespace {

constexpr std::size_t mostBits = 16384;
// Numbers with more are written with a power of ten.
constexpr int mostDecimals = 10; ///< of fractionText(), after more than mostZeros zeros
constexpr int mostZeros = 6;     ///< before or after the digits
constexpr int mostDigits = 24;   ///< of an exact decimal

std::size_t bitsOf(const Integer& number) { return number == 0 ? 0 : msb(abs(number)) + 1; }

std::size_t bitsOf(const Number& number) {
    return bitsOf(numerator(number)) + bitsOf(denominator(number));
}

/// Divides a number by the divisor as often as there is no rest, and returns how often.
int divideOut(Integer& number, unsigned divisor) {
    int count = 0;
    while (number != 0 && number % divisor == 0) {
        number /= divisor;
        ++count;
    }
    return count;
}

std::string withPowerOfTen(std::string mantissa, int exponent) {
    if (exponent == 0) {
        return mantissa;
    }
    if (mantissa == "1" || mantissa == "-1") {
        mantissa.pop_back();
        return mantissa + fmt::format("10^{}", exponent);
    }
    return mantissa + fmt::format("*10^{}", exponent);
}

/// Returns digits * 10^exponent as a decimal, or with a power of ten if the decimal is long.
std::string shortDecimal(const Integer& digits, int exponent) {
    std::string text = digits.str();
    if (exponent >= 0 && exponent <= mostZeros) {
        return text + std::string(static_cast<std::size_t>(exponent), '0');
    }
    const std::size_t sign = digits < 0 ? 1 : 0;
    const int zeros = -exponent - static_cast<int>(text.size() - sign); // after the point
    const bool isLong = exponent < -mostDigits || (exponent < -mostDecimals && zeros > mostZeros);
    if (exponent > 0 || isLong) {
        return withPowerOfTen(std::move(text), exponent);
    }
    if (zeros >= 0) {
        text.insert(sign, static_cast<std::size_t>(zeros) + 1, '0');
    }
    text.insert(text.size() - static_cast<std::size_t>(-exponent), 1, '.');
    return text;
}

constexpr std::size_t longestText = 4000;
constexpr int greatestExponent = 5000;
constexpr int exponentLimit = 1'000'000'000;

// Digits of decimals.
constexpr int roundedDigits = 17;
/// The greatest power of ten that shortestDecimal() writes with zeros.
constexpr int greatestWithZeros = 15;

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

/// Returns digits with a point and zeros, or with a power of ten if that of the first digit,
/// `exponent`, is below -mostZeros or above `greatest`.
std::string decimalNotation(std::string digits, int exponent, int greatest) {
    const int count = static_cast<int>(digits.size());
    if (exponent < -mostZeros || exponent > greatest) {
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

/// Digits of a positive number without zeros at the end.
struct Digits {
    std::string text;
    int exponent = 0; ///< power of ten of the first digit
    bool isExact = true;
};

/// Returns all digits if there are at most `mostDigits`, else `roundedDigits` rounded ones.
Digits significantDigits(const Number& size) {
    Digits result;
    result.exponent = leadingExponent(size);
    const Number scaled = size * powerOfTen(mostDigits - 1 - result.exponent);
    Integer digits;
    Integer rest;
    divide_qr(numerator(scaled), denominator(scaled), digits, rest);
    result.isExact = rest == 0;
    if (result.isExact) {
        result.text = digits.str();
    } else {
        // The truncated rest is not 0, so there are no ties.
        const Integer step = numerator(powerOfTen(mostDigits - roundedDigits));
        result.text = Integer((digits + step / 2) / step).str();
        result.exponent += static_cast<int>(result.text.size()) - roundedDigits;
    }
    result.text.erase(result.text.find_last_not_of('0') + 1);
    return result;
}

/// Returns the fewest digits that determine a positive double.
Digits shortestDigits(double number) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   std::chars_format::scientific);
    const std::string text(buffer.data(), end.ptr);
    const std::size_t mark = text.find('e');
    Digits result{text.substr(0, mark), std::stoi(text.substr(mark + 1)), false};
    std::erase(result.text, '.');
    return result;
}

/// Returns a number rounded to `count` digits, with ties up.
Digits roundedTo(int count, const Number& size) {
    const int exponent = leadingExponent(size);
    const Number scaled = size * powerOfTen(count - 1 - exponent) + Number(1, 2);
    Digits result{Integer(numerator(scaled) / denominator(scaled)).str(), exponent, false};
    result.exponent += static_cast<int>(result.text.size()) - count;
    result.text.erase(result.text.find_last_not_of('0') + 1);
    return result;
}

/// Returns all digits, else the fewest that determine the nearest double. Between two doubles, both
/// of which may need all digits, fewer digits can be as near: 3 * 0.1 in doubles is 0.3.
Digits shownDigits(const Number& size) {
    Digits digits = significantDigits(size);
    const double nearest = toDouble(size);
    if (digits.isExact || !std::isnormal(nearest)) {
        return digits;
    }
    const Number halfUnit(
        std::ldexp(1.0, std::ilogb(nearest) - std::numeric_limits<double>::digits));
    digits = shortestDigits(nearest);
    for (int count = roundedDigits - 2; count < static_cast<int>(digits.text.size()); ++count) {
        Digits fewer = roundedTo(count, size);
        const Number value = Number(Integer(fewer.text)) *
                             powerOfTen(fewer.exponent + 1 - static_cast<int>(fewer.text.size()));
        if (abs(value - size) <= halfUnit) {
            return fewer;
        }
    }
    return digits;
}

} // namespace

std::optional<Number> product(const Number& a, const Number& b) {
    if (bitsOf(a) + bitsOf(b) > mostBits) {
        return std::nullopt;
    }
    return Number(a * b);
}

std::optional<Number> power(const Number& base, std::int64_t power) {
    if (power == 0 || base == 1) {
        return Number(1);
    }
    const std::uint64_t times =
        power < 0 ? 0 - static_cast<std::uint64_t>(power) : static_cast<std::uint64_t>(power);
    if (times > mostBits / bitsOf(base) || (base == 0 && power < 0)) {
        return std::nullopt;
    }
    const auto exponent = static_cast<unsigned>(times);
    const Integer above = pow(numerator(base), exponent);
    const Integer below = pow(denominator(base), exponent);
    return power < 0 ? Number(below, above) : Number(above, below);
}

Number powerOfTen(int power) {
    const Integer ten = pow(Integer(10), static_cast<unsigned>(power < 0 ? -power : power));
    return power < 0 ? Number(1, ten) : Number(ten);
}

bool areClose(const Number& a, const Number& b, double part) {
    const Number sizeA = abs(a);
    const Number sizeB = abs(b);
    return abs(Number(a - b)) <= Number(part) * (sizeA > sizeB ? sizeA : sizeB);
}

std::string fractionText(const Number& number) {
    Integer above = numerator(number);
    Integer below = denominator(number);
    if (above == 0) {
        return "0";
    }
    Integer rest = below;
    const int twos = divideOut(rest, 2);
    const int fives = divideOut(rest, 5);
    if (rest == 1) {
        const int decimals = twos > fives ? twos : fives;
        above = numerator(Number(number * powerOfTen(decimals)));
        const int zeros = divideOut(above, 10);
        return shortDecimal(above, zeros - decimals);
    }
    int tens = divideOut(above, 10);
    int tensBelow = divideOut(below, 10);
    // A few zeros are easier to read than a power of ten.
    if (tens <= mostZeros && tensBelow <= mostZeros) {
        return fmt::format("{}/{}", numerator(number).str(), denominator(number).str());
    }
    return withPowerOfTen(fmt::format("{}/{}", above.str(), below.str()), tens - tensBelow);
}

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
    const Digits digits = shownDigits(abs(number));
    const int greatest = static_cast<int>(digits.text.size()) + mostZeros - 1;
    return fmt::format("{}{}{}", digits.isExact ? "" : "about ", number < 0 ? "-" : "",
                       decimalNotation(digits.text, digits.exponent, greatest));
}

Decimal shortestDecimal(const Number& number) {
    if (number == 0) {
        return {"0", true};
    }
    const Number size = abs(number);
    Digits digits = significantDigits(size);
    const double nearest = toDouble(size);
    if (!digits.isExact && std::isnormal(nearest)) {
        digits = shortestDigits(nearest);
    }
    return {(number < 0 ? "-" : "") +
                decimalNotation(digits.text, digits.exponent, greatestWithZeros),
            digits.isExact};
}

double toDouble(const Number& number) {
    constexpr int lowest = std::numeric_limits<double>::min_exponent -
                           std::numeric_limits<double>::digits; // of a subnormal number
    static const Number leastNormal(std::numeric_limits<double>::min());
    const Number size = abs(number);
    if (size >= leastNormal) {
        return static_cast<double>(number);
    }
    // The conversion above rounds a subnormal result twice.
    const Number scaled = size * Number(pow(Integer(2), static_cast<unsigned>(-lowest)));
    Integer whole;
    Integer rest;
    divide_qr(numerator(scaled), denominator(scaled), whole, rest);
    const int half = Integer(rest * 2).compare(denominator(scaled));
    if (half > 0 || (half == 0 && whole % 2 == 1)) {
        ++whole;
    }
    const double result = std::ldexp(static_cast<double>(whole), lowest);
    return number < 0 ? -result : result;
}

} // namespace tvtool::exact
