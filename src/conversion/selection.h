/// \file
/// Lookup of a conversion function.
#pragma once

#include "conversion/kernel/kernel.h"

namespace TVTypeSys::conversion {

/// The function of ids that are not built-in and of modes that are no enumerators: converts nothing
/// and returns false.
inline bool convertNothing(const void* /*src*/, void* /*dst*/, unsigned long /*srcCount*/,
                           unsigned long /*dstCount*/, bool /*srcIsComplex*/, bool /*dstIsComplex*/,
                           bool /*checkLoss*/, int /*srcId*/, int /*dstId*/,
                           fxpModeOverflow_tag /*overflow*/, fxpModeRounding_tag /*rounding*/) {
    return false;
}

/// Returns whether the conversions have a row and a column for the id.
constexpr bool isBuiltInId(int id) { return id >= 0 && id < builtInTypes; }

/// Returns the function of a pair of types in the given modes; convertNothing if there is none.
inline ConversionFcn selectFunction(const Kernel& kernel, int srcId, int dstId,
                                    fxpModeOverflow_tag overflow, fxpModeRounding_tag rounding) {
    if (!isBuiltInId(srcId) || !isBuiltInId(dstId)) {
        return convertNothing;
    }
    const ConversionPair& pair = kernel.pairs[srcId][dstId];
    const int row = pair.roundingMatters ? rounding : 0;
    const int column = pair.overflowMatters ? overflow : 0;
    const bool exists = row >= 0 && row < roundingModes && column >= 0 && column < overflowModes;
    return exists ? pair.functions[row][column] : convertNothing;
}

} // namespace TVTypeSys::conversion
