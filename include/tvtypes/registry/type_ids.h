/// \file
/// Ids, sources and qualifiers of data types.
#pragma once

#include <cstdint>

/// \addtogroup registry
/// @{

/// Origin of a type. The values 2 and 3 are reserved for clients.
enum DataTypeSource : std::int32_t {
    DataTypeSourceBuiltIn = 0,    ///< made by the table: "auto" and the built-in types
    DataTypeSourcePredefined = 1, ///< made by the table: the predefined types
    DataTypeSourceUnchecked = 4   ///< matches the source of every type
};

namespace TVTypeSys {

/// Id for "no type".
inline constexpr int INVALID_DATA_TYPE_ID = -10;
/// Id of the type "auto". Ids 0 to 8 are the built-in types, 9 to 13 the predefined types, and 14
/// and above all others.
inline constexpr int AUTO_DATA_TYPE_ID = -1;

/// Kind of a type.
enum DataTypeQualifier : std::int32_t {
    DataTypeQualifierBuiltIn = 0,    ///< built-in, "auto" included
    DataTypeQualifierPredefined = 1, ///< predefined
    DataTypeQualifierFixpt = 2,      ///< fixed point or scaled double, recognised by its name
    DataTypeQualifierEnum = 3,       ///< enumerated
    DataTypeQualifierStruct = 4,     ///< struct (bus)
    DataTypeQualifierUnspecified = 5 ///< any other type, and every alias
};

} // namespace TVTypeSys

using TVTypeSys::AUTO_DATA_TYPE_ID;
using TVTypeSys::INVALID_DATA_TYPE_ID;

/// @}
