/// \file
/// Values as they are written in attributes.
#pragma once

#include "fmi/description.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tvtool::fmi {

/// A number in full, blanks around it and a plus before it allowed. Empty if the text is no such
/// number or the number is out of range.
std::optional<std::int32_t> parseInt32(std::string_view text);
std::optional<std::uint32_t> parseUInt32(std::string_view text);
std::optional<std::uint64_t> parseUInt64(std::string_view text);
/// A finite one.
std::optional<double> parseReal(std::string_view text);

/// Takes the first of the words that blanks separate off the text. Empty if there is none.
std::string_view takeWord(std::string_view& text);

/// Whether a word is a value of the base type. A floating-point number may be out of range, which
/// makes it infinite or zero. Every text is a String, Binary or Clock.
bool isValue(std::string_view word, BaseType base);

} // namespace tvtool::fmi
