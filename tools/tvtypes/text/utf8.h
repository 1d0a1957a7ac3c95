/// \file
/// Bytes of UTF-8.
#pragma once

namespace tvtool::text {

/// Returns whether a byte continues a character; a text must not be cut before such a byte.
constexpr bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace tvtool::text
