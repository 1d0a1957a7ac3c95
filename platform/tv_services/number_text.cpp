#include <tv_services/number_text.h>

#include <charconv>
#include <cmath>
#include <iterator>

std::string tvsv_dtoa_fitools(double x) {
    if (std::isnan(x)) {
        return "NaN";
    }
    if (std::isinf(x)) {
        return x < 0 ? "-Inf" : "Inf";
    }
    if (x == 0.0) {
        return "0";
    }
    const double magnitude = std::fabs(x);
    const std::chars_format format = magnitude >= 1e-5 && magnitude < 1e15
                                         ? std::chars_format::fixed
                                         : std::chars_format::scientific;
    // Longest texts: a minus, "0.0000" and 17 digits, or a minus, 17 digits, a point and "e-308".
    char text[24];
    return std::string(text, std::to_chars(std::begin(text), std::end(text), x, format).ptr);
}

std::string tvsv_dtoa(double x, bool plusSign) {
    std::string text = tvsv_dtoa_fitools(x);
    if (plusSign && text.front() != '-') {
        text.insert(text.begin(), '+');
    }
    return text;
}
