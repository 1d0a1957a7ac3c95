/// \file
/// Independent libraries that implement some of the conversions.
#pragma once

#include "conversion/cells.h"

#include <vector>

namespace convbench {

using OtherFcn = void (*)(const void* src, void* dst, std::size_t count);

/// Returns the function of a library for a case of real vectors; null if none gives the same
/// results for the data of the case.
using FindOther = OtherFcn (*)(const Case& wanted);

struct Other {
    const char* name;
    FindOther find; ///< null if the library was not installed when the program was built
};

/// Eigen's cast: wraps, rounds toward zero; floating-point values only within the range of the
/// destination.
OtherFcn findInEigen(const Case& wanted);

/// OpenCV's convertTo: saturates, ties to even; to 32 bits only within the range of the
/// destination.
OtherFcn findInOpenCv(const Case& wanted);

/// VOLK's conversions of single to integers (saturating, ties to even; to 32 bits only within the
/// range of the destination), of signed integers to single, and between single and double.
OtherFcn findInVolk(const Case& wanted);

/// All libraries.
const std::vector<Other>& others();

} // namespace convbench
