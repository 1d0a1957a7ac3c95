/// \file
/// Excerpts of texts with a caret below a position.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::text {

/// Returns two lines: the text around a byte, safe to print, and a caret below that byte.
std::string excerptAt(std::string_view text, std::size_t position);

/// Returns the column of a byte of the text: the number of its character, from 1.
std::size_t columnOf(std::string_view text, std::size_t position);

} // namespace tvtool::text
