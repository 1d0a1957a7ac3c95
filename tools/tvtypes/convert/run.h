/// \file
/// All elements of a source converted into a sink, in memory that does not depend on their number.
#pragma once

#include "convert/conversion.h"
#include "convert/progress.h"
#include "convert/sink.h"
#include "convert/source.h"

namespace tvtool::convert {

void convertAll(Source& source, Conversion& conversion, Sink& sink, Progress& progress);

} // namespace tvtool::convert
