/// \file
/// Reading of model descriptions in FMI 2 and 3.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "fmi/source.h"

#include <memory>

namespace tvtool::fmi {

/// Reads a whole description. An invalid element becomes a remark, and the reading goes on. Throws
/// a files::ReadError if the text is no description in FMI 2 or 3.
std::unique_ptr<Description> readDescription(const Source& source, Remarks& remarks);

/// Checks that the parts of a description agree. Repeated names, values and value references, and
/// declared types and units without a definition become remarks. Erases all but the first
/// definition of a type or unit, adds the units that are used without a definition, and sets
/// Variable::type and Variable::unit.
void checkDescription(Description& description, Remarks& remarks);

} // namespace tvtool::fmi
