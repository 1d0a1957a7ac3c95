/// \file
/// Definitions of the types that every table has.
#pragma once

#include "builtin_ids.h"

#include <tvtypes/fixedpoint/properties.h>
#include <tvtypes/registry/data_type_functions.h>

#include <optional>

namespace TVTypeSys {

inline constexpr int firstPredefinedId = 9;
inline constexpr int predefinedCount = 5;

/// Number of types in a new table: "auto", the built-in and the predefined types.
inline constexpr int initialCount = 1 + builtInCount + predefinedCount;

/// Definition of one of these types. The rest follows from the id: see DataType::copyBuiltInRow.
struct BuiltInTypeRow {
    const char* name;
    int size; ///< in bytes
    /// In BuiltInDataTypes only; in a table every type starts as not atomic.
    bool isAtomic = false;
    std::optional<fxpDataTypeProp> properties = std::nullopt;
    DataTypeFunctions functions = {};
};

/// Returns the definition of "auto", a built-in or a predefined type.
/// \pre `id` is -1 to 13.
const BuiltInTypeRow& builtInTypeRow(int id);

} // namespace TVTypeSys
