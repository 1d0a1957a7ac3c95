/// \file
/// Conversion between UTF-8, the encoding of the tool, and UTF-16, that of the library's units.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::text {

/// Returns the text in UTF-16, with U+FFFD in place of invalid UTF-8.
std::u16string toUtf16(std::string_view text);
/// Returns the text in UTF-8.
std::string toUtf8(std::u16string_view text);

/// Returns the text with its case folded, so that texts that differ in case alone are equal.
std::string foldCase(std::string_view text);

} // namespace tvtool::text
