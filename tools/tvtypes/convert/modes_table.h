/// \file
/// Table of values converted under all modes.
#pragma once

#include "convert/source.h"

#include <ostream>

namespace tvtool::convert {

/// Prints the results of converting each value of the source: a line for each overflow mode, a
/// column for each rounding mode. Modes that make no difference for the pair of types share one.
void printModes(Source& source, Type destination, bool colour, std::ostream& os);

} // namespace tvtool::convert
