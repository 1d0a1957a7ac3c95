/// \file
/// Systems within systems.
#pragma once

#include "ssp/records.h"

namespace tvtool::ssp {

/// Removes the systems of components that contain themselves or are nested too deeply, with a
/// finding, and resolves the references to dictionaries.
void resolveNesting(Package& package);

} // namespace tvtool::ssp
