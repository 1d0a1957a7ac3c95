/// \file
/// What is to be said of numeric types: the records from which every form of it is printed.
///
/// Numbers are texts: exact decimals, "about" and a rounded one, or formulas where the numbers are
/// too large for either.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// The real-world values that a type has. Empty where that is open.
struct FixptRange {
    std::string lowest;
    std::string highest;
    std::string resolution; ///< the distance of neighbours
};

/// A constructor string in one of its forms.
struct FixptConstructor {
    const char* base = "";    ///< the function asked for: "fixdt" or "numerictype"
    const char* scaling = ""; ///< "fraction length", "slope and bias" or "no scaling"
    std::string text;
};

/// All about one numeric type.
struct FixptSheet {
    std::string text; ///< as it was asked for
    fxpDataTypeProp record{};
    std::string identifier;
    std::string fixedPointName; ///< not that of a built-in type; empty for a type without scaling
    std::string kind;
    std::string slope; ///< 0.0625 = 2^-4; empty for a type without scaling
    FixptRange range;
    std::string storage; ///< the name of the built-in type; empty if there is none
    int storageSize = 0; ///< bytes
    bool isAtomic = false;
    std::vector<FixptConstructor> constructors;
    std::vector<std::string> notes;
};

/// What a value becomes under one rounding.
struct QuantizedRow {
    const char* rounding = "";
    std::string stored;        ///< the integer
    std::string value;         ///< what it stands for
    std::string error;         ///< that value minus the one asked for
    const char* overflow = ""; ///< "saturated", "wrapped", or empty
};

struct QuantizedValue {
    std::string text; ///< as it was asked for
    std::vector<QuantizedRow> rows;
};

/// How values are stored in a type.
struct FixptQuantization {
    std::string identifier;
    FixptRange range;
    std::vector<QuantizedValue> values;
};

} // namespace tvtool::fixedpoint
