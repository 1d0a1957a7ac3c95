/// \file
/// Escaping of texts for output on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::text {

/// Returns the text with every control, format, separator and unassigned character, which could
/// control a terminal or hide or reorder other characters, escaped as \uXXXX as in JSON strings,
/// and with U+FFFD in place of invalid UTF-8.
std::string safeText(std::string_view text);

/// Returns the text with blanks in place of line breaks, which separate the sentences of an error.
std::string inOneLine(std::string sentences);

} // namespace tvtool::text
