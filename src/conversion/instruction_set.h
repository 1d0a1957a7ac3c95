/// \file
/// Which form of the kernels this processor runs best.
#pragma once

#include "conversion/kernel/kernel.h"

namespace TVTypeSys::conversion {

/// The kernel of the highest instruction set that processor and operating system both support.
const Kernel& bestKernel();

} // namespace TVTypeSys::conversion
