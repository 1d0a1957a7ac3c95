#include "number.h"

#include "fault.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

namespace tvdata {

namespace {

/// 1.3e-13 too small (relative).
const Exact fractionOfPi(4272943, 1360120);

std::string formatFraction(const Integer& top, int exponent, const Integer& bottom) {
    std::string text = top.str();
    if (exponent != 0) {
        text += fmt::format("e{}", exponent);
    }
    if (bottom != 1) {
        text += "/" + bottom.str();
    }
    return text;
}

} // namespace

Exact Number::value() const { return rational * raised(fractionOfPi, piPower); }

Number& Number::operator*=(const Number& other) {
    if (uncertainty != 0 && other.uncertainty != 0) {
        throw Fault("a definition has two measured values");
    }
    rational *= other.rational;
    piPower += other.piPower;
    uncertainty += other.uncertainty;
    return *this;
}

Exact raised(const Exact& number, int power) {
    using boost::multiprecision::pow;
    const auto exponent = static_cast<unsigned>(std::abs(power));
    const Exact positive(pow(numerator(number), exponent), pow(denominator(number), exponent));
    return power < 0 ? 1 / positive : positive;
}

Number raised(const Number& number, int power) {
    return {raised(number.rational, power), number.piPower * power,
            number.uncertainty * std::abs(power)};
}

int divideOut(Integer& number, int prime) {
    int count = 0;
    while (number % prime == 0) {
        number /= prime;
        ++count;
    }
    return count;
}

int magnitude(const Exact& number) {
    const auto digits = [](const Integer& part) { return static_cast<int>(part.str().size()); };
    return digits(numerator(number)) - digits(denominator(number));
}

std::string formatExact(const Number& number) {
    Integer top = numerator(number.rational);
    Integer bottom = denominator(number.rational);
    const std::string plain = formatFraction(top, 0, bottom);
    // Moves the factors 2 and 5 of the denominator and trailing zeros to a power of ten.
    const int twos = divideOut(bottom, 2);
    const int fives = divideOut(bottom, 5);
    int exponent = -std::max(twos, fives);
    top *= numerator(raised(Exact(2), -exponent - twos) * raised(Exact(5), -exponent - fives));
    while (top % 10 == 0) {
        top /= 10;
        ++exponent;
    }
    const std::string scientific = formatFraction(top, exponent, bottom);
    std::string text = plain.size() <= scientific.size() ? plain : scientific;
    switch (number.piPower) {
    case 0:
        return text;
    case 1:
        return "pi*" + text;
    default:
        return fmt::format("pi^{}*{}", number.piPower, text);
    }
}

} // namespace tvdata
