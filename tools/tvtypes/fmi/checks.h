/// \file
/// Whether the parts of a description fit together.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"

namespace tvtool::fmi {

/// Says which names, values and value references occur twice and which declared types and units are
/// not to be had. Takes out all but the first definition of a type or unit, adds units that are
/// only used, and sets Variable::type and Variable::unit.
void checkDescription(Description& description, Remarks& remarks);

} // namespace tvtool::fmi
