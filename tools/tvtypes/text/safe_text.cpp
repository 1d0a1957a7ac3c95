#include "text/safe_text.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tvtool::text {

namespace {

constexpr std::uint32_t unsafeCategories =
    U_GC_CC_MASK | U_GC_CF_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK | U_GC_CN_MASK;

} // namespace

std::string safeText(std::string_view text) {
    std::string safe;
    safe.reserve(text.size());
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::size_t length = text.size();
    for (std::size_t i = 0; i < length;) {
        const std::size_t begin = i;
        UChar32 character = 0;
        U8_NEXT(bytes, i, length, character);
        if (character < 0) {
            safe += "\xEF\xBF\xBD";
        } else if ((U_GET_GC_MASK(character) & unsafeCategories) == 0) {
            safe += text.substr(begin, i - begin);
        } else if (U_IS_BMP(character)) {
            fmt::format_to(std::back_inserter(safe), "\\u{:04x}", character);
        } else {
            fmt::format_to(std::back_inserter(safe), "\\u{:04x}\\u{:04x}",
                           static_cast<unsigned>(U16_LEAD(character)),
                           static_cast<unsigned>(U16_TRAIL(character)));
        }
    }
    return safe;
}

std::string inOneLine(std::string sentences) {
    std::ranges::replace(sentences, '\n', ' ');
    return sentences;
}

} // namespace tvtool::text
