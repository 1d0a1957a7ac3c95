/// \file
/// Total slope of a record.
#pragma once

#include "floating_point_environment.h"

#include <tvtypes/fixedpoint/properties.h>

#include <cmath>

namespace TVTypeSys {

/// Returns the factor times two to the power of the exponent.
inline double totalSlope(const fxpDataTypeProp& record) {
    // An exponent or a factor that is not valid may give a result that is rounded or infinite.
    return inDefaultEnvironment(record.SlopeAdjustmentFactor, [&](double factor) {
        return std::ldexp(factor, record.FixedExponent);
    });
}

/// Returns whether the total slope is a normal double, given a valid factor.
inline bool slopeIsNormal(const fxpDataTypeProp& record) {
    return record.FixedExponent >= -1022 && record.FixedExponent <= 1023;
}

} // namespace TVTypeSys
