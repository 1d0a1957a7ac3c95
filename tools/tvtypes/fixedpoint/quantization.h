/// \file
/// Values stored in a fixed-point type.
#pragma once

#include "report/fixpt.h"

#include <string>
#include <vector>

namespace tvtool::fixpt {

/// What decimal numbers become under every rounding, computed without loss. Throws an Error for a
/// text that is no number, and for a type that stores no integers or too large ones.
report::FixptQuantization quantized(const std::vector<std::string>& values,
                                    const fxpDataTypeProp& record, fxpModeOverflow_tag overflow);

} // namespace tvtool::fixpt
