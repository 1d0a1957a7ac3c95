#pragma once

#include <fnd/ustring.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fnd::i18n {

/// ICU counts in 32 bits, and no encoding takes more than eight bytes for a 16-bit character.
constexpr std::size_t longestText = std::size_t{1} << 27;

/// The length as ICU takes it; throws std::length_error beyond the longest.
std::int32_t checkedLength(std::size_t length);

std::string toUtf8(std::u16string_view text);
fnd::ustring fromUtf8(std::string_view text);

} // namespace fnd::i18n
