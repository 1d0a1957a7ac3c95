/// \file
/// Selection of the kernel for this processor.
#pragma once

#include "conversion/kernel/kernel.h"

namespace TVTypeSys::conversion {

/// Returns the kernel of the highest instruction set that both the processor and the operating
/// system support.
const Kernel& bestKernel();

} // namespace TVTypeSys::conversion
