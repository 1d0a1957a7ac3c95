/// \file
/// Lookup of a conversion function.
#pragma once

#include "conversion/kernel/kernel.h"

#include <cassert>

namespace TVTypeSys::conversion {

/// Returns the function of a pair of types in the given modes. The only place that asserts the
/// preconditions of the conversions on ids and modes.
inline ConversionFcn selectFunction(const Kernel& kernel, int srcId, int dstId,
                                    fxpModeOverflow_tag overflow, fxpModeRounding_tag rounding) {
    assert(srcId >= 0 && srcId < builtInTypes);
    assert(dstId >= 0 && dstId < builtInTypes);
    assert(overflow >= 0 && overflow < overflowModes);
    assert(rounding >= 0 && rounding < roundingModes);
    const ConversionPair& pair = kernel.pairs[srcId][dstId];
    return pair.functions[pair.roundingMatters ? rounding : 0][overflow];
}

} // namespace TVTypeSys::conversion
