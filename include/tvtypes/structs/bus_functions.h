/// \file
/// Access to struct types by id. An alias is resolved to the type at the end of its chain.
#pragma once

#include <tvtypes/export.h>

/// \addtogroup structs
/// @{

struct tvChecksumValue;

namespace TVTypeSys {
class DataTypeTable;
}

/// \name Struct types by id
/// All throw TorvaneTypes::general::InvalidDataTypeId (id) for an id that the table does not have;
/// the two checksum functions also throw it for a type that is not a struct.
/// @{

/// Returns whether the type is a struct type with StructDataType::isBusType. False for -1, "auto".
TVTYPES_API bool DtGetDataTypeIsBus(const TVTypeSys::DataTypeTable* table, int id);

/// Returns the checksum of a struct type. The reference is valid as long as the type's record.
TVTYPES_API const tvChecksumValue&
DtGetStructDataTypeChecksum(const TVTypeSys::DataTypeTable* table, int id);

/// Sets the checksum of a struct type.
TVTYPES_API void DtSetStructDataTypeChecksum(TVTypeSys::DataTypeTable* table, int id,
                                             const tvChecksumValue& value);

/// @}

/// @}
