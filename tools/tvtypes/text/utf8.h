/// \file
/// Bytes and display width of UTF-8 texts.
#pragma once

#include <cstddef>
#include <string>

namespace tvtool::text {

/// Returns whether a byte continues a character; a text must not be cut before such a byte.
constexpr bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Returns the number of terminal columns that a text takes.
std::size_t displayWidth(const std::string& text);

} // namespace tvtool::text
