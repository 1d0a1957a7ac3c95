/// \file
/// Reading of model descriptions in FMI 2 and 3.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "fmi/source.h"

#include <cstdint>
#include <memory>

namespace tvtool::fmi {

/// The versions of FMI that are read. Of FMI 1 that are the names, types and causalities of
/// variables.
enum class Versions : std::uint8_t { From2, All };

/// Reads a whole description. An invalid element becomes a finding, and the reading goes on. Throws
/// a files::ReadError if the text is no description in one of the versions.
std::unique_ptr<Description> readDescription(const exchange::Source& source,
                                             findings::Findings& findings,
                                             Versions versions = Versions::From2);

/// Checks that the parts of a description agree. Repeated names, values and value references, and
/// declared types and units without a definition become findings. Erases all but the first
/// definition of a type or unit, adds the units that are used without a definition, and sets
/// Variable::type and Variable::unit. Those of FMI 1 are not checked.
void checkDescription(Description& description, findings::Findings& findings);

} // namespace tvtool::fmi
