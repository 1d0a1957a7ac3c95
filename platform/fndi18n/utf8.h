/// \file
/// Conversion between UTF-8 and UTF-16.
#pragma once

#include <fnd/ustring.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fnd::i18n {

/// ICU has 32-bit lengths, and no encoding takes more than eight bytes for a 16-bit code unit.
constexpr std::size_t longestText = std::size_t{1} << 27;

/// Converts a length to the type of ICU. Throws std::length_error if it exceeds longestText.
std::int32_t checkedLength(std::size_t length);

/// Convert a text and replace ill-formed sequences by U+FFFD. Throw std::length_error if it is too
/// long.
std::string toUtf8(std::u16string_view text);
fnd::ustring fromUtf8(std::string_view text);

} // namespace fnd::i18n
