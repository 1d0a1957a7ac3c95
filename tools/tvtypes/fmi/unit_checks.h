/// \file
/// Whether the units of a description fit together.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"

namespace tvtool::fmi {

/// Says which units are defined twice and which are not to be had. Takes out all but the first
/// definition of a unit, adds those that are only used, and sets Variable::unit. Declared types
/// have been resolved.
void checkUnits(Description& description, Remarks& remarks);

} // namespace tvtool::fmi
