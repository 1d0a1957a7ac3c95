/// \file
/// Display width of texts.
#pragma once

#include <cstddef>
#include <string>

namespace tvtool::text {

/// Returns the number of terminal columns that a text takes.
std::size_t displayWidth(const std::string& text);

} // namespace tvtool::text
