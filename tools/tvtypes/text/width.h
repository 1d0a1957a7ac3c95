/// \file
/// Width of texts on a screen.
#pragma once

#include <cstddef>
#include <string>

namespace tvtool::text {

/// Returns the number of columns that a text takes on a screen.
std::size_t displayWidth(const std::string& text);

} // namespace tvtool::text
