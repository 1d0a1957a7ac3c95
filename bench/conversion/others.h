/// \file
/// Independent libraries that do some of the conversions.
#pragma once

#include "conversion/cells.h"

#include <vector>

namespace convbench {

using OtherFcn = void (*)(const void* src, void* dst, std::size_t count);

/// What a library has for a case of real vectors, null where it has nothing that gives the same
/// results for the case's data.
using FindOther = OtherFcn (*)(const Case& wanted);

struct Other {
    const char* name;
    FindOther find; ///< null where the library was not there when the program was built
};

/// Eigen's cast: wraps, toward zero; of floating-point values only what the destination holds.
OtherFcn findInEigen(const Case& wanted);

/// OpenCV's convertTo: saturates, ties to even; to 32 bits only what the destination holds.
OtherFcn findInOpenCv(const Case& wanted);

/// VOLK's conversions of single to integers (saturating, ties to even; to 32 bits only what the
/// destination holds), of signed integers to single, and between single and double.
OtherFcn findInVolk(const Case& wanted);

const std::vector<Other>& others();

} // namespace convbench
