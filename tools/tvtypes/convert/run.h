/// \file
/// Conversion of a whole source.
#pragma once

#include "convert/conversion.h"
#include "convert/sink.h"
#include "convert/source.h"

#include <ostream>

namespace tvtool::convert {

/// Converts all elements of a source into a sink, in chunks, so that the memory does not depend on
/// their number. Shows a progress bar on the last line of `terminal` while it runs, if `terminal`
/// is not null and the source knows its number of elements.
void convertAll(Source& source, Conversion& conversion, Sink& sink, std::ostream* terminal);

} // namespace tvtool::convert
