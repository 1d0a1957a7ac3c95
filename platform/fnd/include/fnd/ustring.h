/// \file
/// String type of 16-bit texts.
#pragma once

#include <string>

namespace fnd {

/// A text in UTF-16: names and expressions of units, and paths.
using ustring = std::basic_string<char16_t>;

} // namespace fnd
