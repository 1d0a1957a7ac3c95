#include "text/excerpt.h"

#include "text/safe_text.h"
#include "text/utf8.h"

#include <algorithm>

namespace tvtool::text {

namespace {

/// The most bytes before and after the position.
constexpr std::size_t around = 40;

} // namespace

std::string excerptAt(std::string_view text, std::size_t position) {
    position = std::min(position, text.size());
    std::size_t begin = position - std::min(position, around);
    while (begin < position && isContinuationByte(text[begin])) {
        ++begin;
    }
    std::size_t end = position + std::min(text.size() - position, around);
    while (end < text.size() && isContinuationByte(text[end])) {
        ++end;
    }
    const std::string before =
        "  " + std::string(begin > 0 ? "..." : "") + safeText(text.substr(begin, position - begin));
    const std::string after =
        safeText(text.substr(position, end - position)) + (end < text.size() ? "..." : "");
    return before + after + '\n' + std::string(displayWidth(before), ' ') + "^\n";
}

std::size_t columnOf(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    return before.size() -
           static_cast<std::size_t>(std::ranges::count_if(before, isContinuationByte)) + 1;
}

} // namespace tvtool::text
