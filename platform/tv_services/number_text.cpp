#include <tv_services/number_text.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

char* copied(std::string_view from, char* to) { return std::copy(from.begin(), from.end(), to); }

} // namespace

char* tvsv_dtoa_into(char* text, double x) {
    if (std::isnan(x)) {
        return copied("NaN", text);
    }
    if (std::isinf(x)) {
        return copied(x < 0 ? "-Inf" : "Inf", text);
    }
    if (x == 0.0) {
        return copied("0", text);
    }
    const double magnitude = std::fabs(x);
    const std::chars_format format = magnitude >= 1e-5 && magnitude < 1e15
                                         ? std::chars_format::fixed
                                         : std::chars_format::scientific;
    // Longest texts: a minus, "0.0000" and 17 digits, or a minus, 17 digits, a point and "e-308".
    return std::to_chars(text, text + tvsvLongestNumberText, x, format).ptr;
}

std::string tvsv_dtoa_fitools(double x) {
    char text[tvsvLongestNumberText];
    return std::string(text, tvsv_dtoa_into(text, x));
}

std::string tvsv_dtoa(double x, bool plusSign) {
    std::string text = tvsv_dtoa_fitools(x);
    if (plusSign && text.front() != '-') {
        text.insert(text.begin(), '+');
    }
    return text;
}
