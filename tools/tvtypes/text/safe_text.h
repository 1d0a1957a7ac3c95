/// \file
/// Texts from files, made safe to show.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::text {

/// The text with every character that could steer a terminal, hide or move other characters
/// written as \uXXXX, and with U+FFFD where it is no UTF-8. The escapes are those of JSON strings.
std::string safeText(std::string_view text);

/// The sentences of a refusal, a line each, behind one another.
std::string inOneLine(std::string sentences);

} // namespace tvtool::text
