/// \file
/// The host's class ids, memory and enumeration objects for values of the built-in types.
#pragma once

#include <tvtypes/export.h>

struct oxArray_tag;
class tvsvDiagnosticImpl;
enum oxClassID : int;

namespace TVTypeSys {
class DataTypeTable;
}

/// \name The host's classes, memory and enumerations
/// @{

/// The host's class for a built-in type, and for the predefined type "integer", which is int32;
/// 0 for every other id. `boolean` is the host's uint8 if `booleanAsUint8` holds, else its boolean.
TVTYPES_API oxClassID utGetoxClassIdFromDTypeId(int dataTypeId, bool booleanAsUint8);

/// The built-in type that a class of the host stands for; -10 if there is none.
TVTYPES_API int utGetDTypeIdFromOxClassId(oxClassID classId);

/// Zeroed memory of the host, released by the host, for `count` values of a type of the table;
/// complex values take two parts each. Null if `count` is below 1 or the type has no size. The id
/// is not tested. Refused with TorvaneTypes::general::MemoryAllocErr if there is no such memory,
/// and if there are 2^31 parts or more.
TVTYPES_API void* oxDTypeCalloc(const TVTypeSys::DataTypeTable* table, int count, int dataTypeId,
                                bool isComplex);

/// Makes an object of an enumeration by calling its class, a function of the host, with an integer
/// value, which stays the caller's. Null on success, with the new object behind `object`, owned by
/// the caller; else the diagnostic of the call, owned by the caller.
TVTYPES_API tvsvDiagnosticImpl* tvGetEnumObjectFromIntValue(const oxArray_tag* value,
                                                            oxArray_tag** object,
                                                            const char* enumClassName);

namespace TVTypeConv {

/// Puts the object that the enumeration's class makes of `array` in the place of `array`, which it
/// gives up. Refused with the diagnostic of the call; then `array` is as it was.
TVTYPES_API void tvConvertMatrixToEnumObjects(oxArray_tag*& array, const char* enumClassName);

} // namespace TVTypeConv

/// @}
