/// \file
/// Total slope of a record.
#pragma once

#include <tvtypes/fixedpoint/properties.h>

#include <cmath>

namespace TVTypeSys {

/// Returns the factor times two to the power of the exponent.
inline double totalSlope(const fxpDataTypeProp& record) {
    return std::ldexp(record.SlopeAdjustmentFactor, record.FixedExponent);
}

/// Returns whether the total slope is a normal double, given a valid factor.
inline bool slopeIsNormal(const fxpDataTypeProp& record) {
    return record.FixedExponent >= -1022 && record.FixedExponent <= 1023;
}

} // namespace TVTypeSys
