/// \file
/// What a conversion between base types can lose.
#pragma once

#include "exchange/records.h"

namespace tvtool::systems {

struct TypeLoss {
    bool range = false;    ///< values can be out of range
    bool fraction = false; ///< fractions are cut off
    bool digits = false;   ///< values are rounded to fewer digits

    bool any() const { return range || fraction || digits; }
    bool operator==(const TypeLoss&) const = default;
};

/// Return whether a base type is a number or Boolean, and of which kind; an enumeration is none.
bool isNumeric(exchange::BaseType base);
bool isReal(exchange::BaseType base);
bool isInteger(exchange::BaseType base); ///< Boolean and enumerations are none

/// Returns what values of one numeric type can lose in another one. Between the types of the
/// library its conversion decides, on the values at which a type ends; integers of 64 bits are none
/// of them. \pre isNumeric() of both
TypeLoss lossBetween(exchange::BaseType source, exchange::BaseType target);

} // namespace tvtool::systems
