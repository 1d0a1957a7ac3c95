/// \file
/// The definitions of the types that every table holds.
#pragma once

#include <tvtypes/datatype.h>
#include <tvtypes/fixedpoint/properties.h>

namespace TVTypeSys {

/// The ids of the built-in types.
enum BuiltInId : int {
    DOUBLE_ID,
    SINGLE_ID,
    INT8_ID,
    UINT8_ID,
    INT16_ID,
    UINT16_ID,
    INT32_ID,
    UINT32_ID,
    BOOLEAN_ID,
};

inline constexpr int builtInCount = 9;
inline constexpr int firstPredefinedId = 9;
inline constexpr int predefinedCount = 5;

/// How many types a fresh table holds: "auto", the built-in and the predefined.
inline constexpr int initialCount = 1 + builtInCount + predefinedCount;

struct BuiltInRow {
    const char* name;
    int size;
    bool isAtomic;
    fxpDataTypeProp properties;
    DataTypeFunctions functions;
};

struct PredefinedRow {
    const char* name;
    int size;
};

/// The built-in types by id, and the predefined types by id - 9.
extern const BuiltInRow builtInRows[builtInCount];
extern const PredefinedRow predefinedRows[predefinedCount];

} // namespace TVTypeSys
