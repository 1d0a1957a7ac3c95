#include "exact/number.h"

#include <fmt/format.h>

#include <cstddef>

namespace tvtool::exact {

namespace {

constexpr std::size_t mostBits = 16384;
// Numbers with at most these are written without a power of ten.
constexpr int mostDecimals = 10;
constexpr int mostZeros = 6;

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
    if (exponent > 0 || exponent < -mostDecimals) {
        return withPowerOfTen(std::move(text), exponent);
    }
    const std::size_t sign = digits < 0 ? 1 : 0;
    const auto decimals = static_cast<std::size_t>(-exponent);
    if (text.size() - sign <= decimals) {
        text.insert(sign, decimals + 1 - (text.size() - sign), '0');
    }
    text.insert(text.size() - decimals, 1, '.');
    return text;
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

bool areClose(const Number& a, const Number& b, double part) {
    const Number sizeA = abs(a);
    const Number sizeB = abs(b);
    return abs(Number(a - b)) <= Number(part) * (sizeA > sizeB ? sizeA : sizeB);
}

} // namespace tvtool::exact
