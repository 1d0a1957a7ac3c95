/// \file
/// Bytes and display width of UTF-8 texts.
#pragma once

#include <cstddef>
#include <string_view>

namespace tvtool::text {

/// Returns whether a byte continues a character; a text must not be cut before such a byte.
constexpr bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Returns whether a text consists of printable ASCII characters, each of which is a byte and a
/// terminal column.
constexpr bool isPrintableAscii(std::string_view text) {
    for (const char c : text) {
        if (c < ' ' || c > '~') {
            return false;
        }
    }
    return true;
}

/// Returns the number of terminal columns that a text takes.
std::size_t displayWidth(std::string_view text);

/// Returns the longest beginning of a text that takes at most `width` terminal columns.
std::string_view prefixOfWidth(std::string_view text, std::size_t width);

/// Returns the longest end of a text that takes at most `width` terminal columns.
std::string_view suffixOfWidth(std::string_view text, std::size_t width);

} // namespace tvtool::text
