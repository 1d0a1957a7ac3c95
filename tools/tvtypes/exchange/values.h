/// \file
/// Values of attributes.
#pragma once

#include "exchange/records.h"

#include <optional>
#include <string_view>

namespace tvtool::exchange {

/// Parses one number, which may have a plus sign and blanks around it. Returns nothing if the text
/// is invalid or the number is out of range. For std::int32_t, std::int64_t, std::uint32_t,
/// std::uint64_t and double.
template <class Number>
std::optional<Number> parseNumber(std::string_view text);

/// Returns the text without blanks around it.
std::string_view trimmed(std::string_view text);

/// Removes the first of the words that blanks separate from the text, and returns it. Returns an
/// empty text if there is none.
std::string_view takeWord(std::string_view& text);

/// Returns whether a word is a value of the base type. A floating-point number may be out of range,
/// and is then infinite or zero. Every word is a String, Binary or Clock.
bool isValue(std::string_view word, BaseType base);

} // namespace tvtool::exchange
