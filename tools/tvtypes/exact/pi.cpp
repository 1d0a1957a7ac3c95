#include "exact/pi.h"

#include <fmt/format.h>

namespace tvtool::exact {

const Number& pi() {
    static const Number value = parseDecimal("3.1415926535897932384626433832795028841971693993751");
    return value;
}

std::string multipleOfPiText(const Number& number, std::int64_t piPower) {
    // A result of this size was computed before.
    const std::optional<Number> divisor = power(pi(), piPower);
    if (piPower == 0 || number == 0 || !divisor) {
        return fractionText(number);
    }
    const Number multiple = number / *divisor;
    const std::int64_t size = piPower < 0 ? -piPower : piPower;
    const std::string piText = size == 1 ? "pi" : fmt::format("pi^{}", size);
    const auto times = [&piText](const std::string& factor) {
        return factor == "1" ? piText : fmt::format("{}*{}", factor, piText);
    };
    const std::string above = numerator(multiple).str();
    const std::string below = denominator(multiple).str();
    std::string quotient;
    if (piPower > 0) {
        quotient = times(above) + (below == "1" ? "" : "/" + below);
    } else {
        quotient = below == "1" ? fmt::format("{}/{}", above, piText)
                                : fmt::format("{}/({})", above, times(below));
    }
    const std::string decimal = fractionText(multiple);
    const std::string product =
        piPower > 0 ? times(decimal) : fmt::format("{}/{}", decimal, piText);
    // 16129*10^-14*pi is shorter than 16129*pi/100000000000000.
    const bool isDecimal = decimal.find('/') == std::string::npos;
    return isDecimal && product.size() < quotient.size() ? product : quotient;
}

} // namespace tvtool::exact
