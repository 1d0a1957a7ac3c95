/// \file
/// Single values under all modes.
#pragma once

#include "convert/source.h"

#include <ostream>

namespace tvtool::convert {

/// Prints what each value of the source becomes: a line for every behaviour on overflow, a column
/// for every rounding. Where the pair of types has no choice, there is one for all.
void printModes(Source& source, Type destination, bool colour, std::ostream& os);

} // namespace tvtool::convert
