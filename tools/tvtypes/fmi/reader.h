/// \file
/// Reading of model descriptions in FMI 2 and 3.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "fmi/source.h"

#include <memory>

namespace tvtool::fmi {

/// Reads a whole description. An invalid element becomes a finding, and the reading goes on. Throws
/// a files::ReadError if the text is no description in FMI 2 or 3.
std::unique_ptr<Description> readDescription(const exchange::Source& source,
                                             findings::Findings& findings);

/// Checks that the parts of a description agree. Repeated names, values and value references, and
/// declared types and units without a definition become findings. Erases all but the first
/// definition of a type or unit, adds the units that are used without a definition, and sets
/// Variable::type and Variable::unit.
void checkDescription(Description& description, findings::Findings& findings);

} // namespace tvtool::fmi
