/// \file
/// A place in a text, pointed at.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::text {

/// Two lines: what stands around a byte of the text, made safe to show, and a caret below it.
std::string excerptAt(std::string_view text, std::size_t position);

/// Which character stands at a byte of the text, from 1.
std::size_t columnOf(std::string_view text, std::size_t position);

} // namespace tvtool::text
