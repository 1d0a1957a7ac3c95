/// \file
/// Detection of overflow in a conversion from floating point to integers.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

/// \addtogroup conversion
/// @{

namespace TVTypeSys::DataTypeConvOverflowUtilities {

/// Returns whether any of `count` floating-point elements, rounded in this mode, is outside the
/// range of the integer type `Dst`; both parts of complex elements are checked. An infinity
/// overflows, NaN does not. False if `rounding` is not an enumerator. `Dst` is one of the six
/// integer types of up to 32 bits, `Src` float or double. Stops at the first element that
/// overflows. The result does not depend on the floating-point environment. \pre `data` has `count`
/// elements, twice as many parts if complex; unchecked. It is not read if `count` is below 1.
template <class Dst, class Src>
TVTYPES_API bool CheckFloatVectForConvOverflow(const Src* data, int count, bool isComplex,
                                               fxpModeRounding_tag rounding);

} // namespace TVTypeSys::DataTypeConvOverflowUtilities

/// @}
