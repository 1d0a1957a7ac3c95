/// \file
/// Expressions for units that are not in the grammar of the library.
#pragma once

#include "units/reading.h"

#include <string_view>

namespace tvtool::units {

/// Returns the expression of the names and powers of a text, with notes on what was assumed. Throws
/// an UnknownUnit or another text::ParseError for an invalid text, and for one with several
/// readings.
Reading readSpelling(std::string_view text);

} // namespace tvtool::units
