#include <tv_services/number_text.h>

#include <array>
#include <charconv>
#include <cmath>

std::string tvsv_dtoa(double x, bool plusSign) {
    std::string text;
    if (std::isnan(x)) {
        return "NaN";
    }
    if (std::isinf(x)) {
        text = x < 0 ? "-Inf" : "Inf";
    } else if (x == 0.0) {
        text = "0";
    } else {
        const double magnitude = std::fabs(x);
        const std::chars_format format = magnitude >= 1e-5 && magnitude < 1e15
                                             ? std::chars_format::fixed
                                             : std::chars_format::scientific;
        // The longest: a sign, 17 digits, a point, "e-308", or zeros of 1e-5 before the digits.
        std::array<char, 40> buffer{};
        const std::to_chars_result end =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), x, format);
        text.assign(buffer.data(), end.ptr);
    }
    if (plusSign && text.front() != '-') {
        text.insert(text.begin(), '+');
    }
    return text;
}

std::string tvsv_dtoa_fitools(double x) { return tvsv_dtoa(x, false); }
