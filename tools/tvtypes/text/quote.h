/// \file
/// Quoting and shortening of texts in sentences and tables.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::text {

/// The longest name, in bytes, that sentences and paths show in full.
inline constexpr std::size_t longestName = 120;

/// Returns the text, cut after at most `longest` bytes at the start of a character and followed by
/// "..." if it is longer.
std::string shortened(std::string_view text, std::size_t longest = longestName);

/// Returns the text in double quotes, shortened.
std::string quoted(std::string_view text);

/// Returns "no types", "1 type" or "2 types".
std::string counted(std::size_t count, std::string_view one, std::string_view many);

} // namespace tvtool::text
