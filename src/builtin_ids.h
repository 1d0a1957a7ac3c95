/// \file
/// Ids of the built-in types, in every table.
#pragma once

namespace TVTypeSys {

enum BuiltInId : int {
    DoubleId,
    SingleId,
    Int8Id,
    UInt8Id,
    Int16Id,
    UInt16Id,
    Int32Id,
    UInt32Id,
    BooleanId,
};

inline constexpr int builtInCount = 9;

} // namespace TVTypeSys
