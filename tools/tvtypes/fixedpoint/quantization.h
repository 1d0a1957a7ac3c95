/// \file
/// Values stored in a fixed-point type.
#pragma once

#include "fixedpoint/records.h"

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// What decimal numbers become under every rounding, computed without loss. Throws an Error for a
/// text that is no number, and for a type that stores no integers or too large ones.
fixedpoint::FixptQuantization quantized(const std::vector<std::string>& values,
                                        const fxpDataTypeProp& record,
                                        fxpModeOverflow_tag overflow);

} // namespace tvtool::fixedpoint
