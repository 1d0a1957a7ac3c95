/// \file
/// Conversion between UTF-8 and UTF-16 texts, and operations on UTF-16 texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Converts UTF-8 to UTF-16; null counts as "".
std::u16string wide(const char* text);

/// Converts UTF-16 to UTF-8.
std::string narrow(const std::u16string& text);

/// Appends a UTF-16 text, converted to UTF-8.
void appendNarrow(std::string& out, std::u16string_view text);

/// Returns whether every character is a letter or a digit.
bool isAlphanumeric(const std::u16string& text);

/// Splits a text at its commas. Returns an empty vector for an empty text.
std::vector<std::u16string> splitAtCommas(const std::u16string& text);

} // namespace TVTypeSys
