/// \file
/// Conversion of a whole source, under one mode or all modes.
#pragma once

#include "convert/conversion.h"
#include "convert/streams.h"

#include <ostream>

namespace tvtool::convert {

/// Converts all elements of a source into a sink, in chunks, so that the memory does not depend on
/// their number. Shows a progress bar on the last line of `terminal` while it runs, if `terminal`
/// is not null and the source knows its number of elements.
void convertAll(Source& source, Conversion& conversion, Sink& sink, std::ostream* terminal);

/// Prints the results of converting each value of the source: a line for each overflow mode, a
/// column for each rounding mode. Modes that make no difference for the pair of types share one.
void printModes(Source& source, Type destination, bool colour, std::ostream& os);

} // namespace tvtool::convert
