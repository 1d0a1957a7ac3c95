/// \file
/// The total slope of a record.
#pragma once

#include <tvtypes/fixedpoint/properties.h>

#include <cmath>

namespace TVTypeSys {

inline double totalSlope(const fxpDataTypeProp& record) {
    return std::ldexp(record.SlopeAdjustmentFactor, record.FixedExponent);
}

/// Whether a valid factor and the record's exponent make a slope that is a normal double.
inline bool slopeIsNormal(const fxpDataTypeProp& record) {
    return record.FixedExponent >= -1022 && record.FixedExponent <= 1023;
}

} // namespace TVTypeSys
