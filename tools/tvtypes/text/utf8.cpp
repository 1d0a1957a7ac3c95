#include "text/utf8.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace tvtool::text {

namespace {

/// Returns the terminal columns of a character; a negative one is invalid and printed as U+FFFD.
std::size_t columnsOf(UChar32 character) {
    if (character < 0x300) {
        return 1;
    }
    if ((U_GET_GC_MASK(character) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0) {
        return 0;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// Returns the terminal columns of the character at a position, and moves the position behind it.
std::size_t nextColumns(std::string_view text, std::size_t& position) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 character = 0;
    U8_NEXT(bytes, position, text.size(), character);
    return columnsOf(character);
}

} // namespace

std::size_t displayWidth(std::string_view text) {
    if (isPrintableAscii(text)) {
        return text.size();
    }
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size();) {
        width += nextColumns(text, i);
    }
    return width;
}

std::string_view prefixOfWidth(std::string_view text, std::size_t width) {
    std::size_t end = 0;
    for (std::size_t next = 0; next < text.size(); end = next) {
        const std::size_t columns = nextColumns(text, next);
        if (columns > width) {
            break;
        }
        width -= columns;
    }
    return text.substr(0, end);
}

std::string_view suffixOfWidth(std::string_view text, std::size_t width) {
    std::size_t begin = text.size();
    while (begin > 0) {
        std::size_t first = begin - 1;
        while (first > 0 && isContinuationByte(text[first])) {
            --first;
        }
        std::size_t next = first;
        const std::size_t columns = nextColumns(text, next);
        if (columns > width) {
            break;
        }
        width -= columns;
        begin = first;
    }
    return text.substr(begin);
}

} // namespace tvtool::text
