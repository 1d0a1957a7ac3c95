/// \file
/// Memory maps for people.
#pragma once

#include "model/layout.h"

#include <ostream>

namespace tvtool::model {

void printLayout(const LayoutFindings& findings, bool colour, std::ostream& os);

} // namespace tvtool::model
