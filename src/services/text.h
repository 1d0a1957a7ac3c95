/// \file
/// Texts between the two string types, and what is done with 16-bit ones. Narrow texts are UTF-8.
#pragma once

#include <string>
#include <vector>

namespace TVTypeSys {

/// The 16-bit form of a text; null counts as "".
std::u16string wide(const char* text);

/// The narrow form of a text.
std::string narrow(const std::u16string& text);

/// Whether every character is a letter or a digit.
bool isAlphanumeric(const std::u16string& text);

/// What stands between the commas of a text; nothing if it is empty.
std::vector<std::u16string> splitAtCommas(const std::u16string& text);

} // namespace TVTypeSys
