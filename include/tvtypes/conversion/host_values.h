/// \file
/// The host's class ids, memory and enumeration objects for values of the built-in types.
#pragma once

#include <tvtypes/export.h>

/// \addtogroup conversion
/// @{

struct oxArray_tag;
class tvsvDiagnosticImpl;
enum oxClassID : int;

namespace TVTypeSys {
class DataTypeTable;
}

/// Returns the host's class of a built-in type, or of the predefined type "integer", which is
/// int32; 0 for every other id. The class of `boolean` is the host's uint8 if `booleanAsUint8` is
/// true, otherwise its boolean.
TVTYPES_API oxClassID utGetoxClassIdFromDTypeId(int dataTypeId, bool booleanAsUint8);

/// Returns the id of the built-in type of a class of the host; INVALID_DATA_TYPE_ID (-10) if there
/// is none.
TVTYPES_API int utGetDTypeIdFromOxClassId(oxClassID classId);

/// Allocates zeroed host memory for `count` values of a type of `table`; complex values have two
/// parts each. Returns null if `count` is below 1 or the type has no size. The caller owns the
/// memory and frees it with the host's function.
///
/// Throws TorvaneTypes::general::MemoryAllocErr if the allocation fails or there are 2^31 parts or
/// more.
/// \pre `table` is not null and `dataTypeId` is valid in it; neither is checked.
TVTYPES_API void* oxDTypeCalloc(const TVTypeSys::DataTypeTable* table, int count, int dataTypeId,
                                bool isComplex);

/// Constructs an object of an enumeration by calling its class, a function of the host, with an
/// integer value. `value` remains the caller's.
///
/// Returns null on success, with the new object, owned by the caller, in `object`; otherwise the
/// diagnostic of the call, owned by the caller.
/// \pre No pointer is null; unchecked.
TVTYPES_API tvsvDiagnosticImpl* tvGetEnumObjectFromIntValue(const oxArray_tag* value,
                                                            oxArray_tag** object,
                                                            const char* enumClassName);

namespace TVTypeConv {

/// Replaces `array` by the object that the class of the enumeration constructs from it, and
/// releases the previous value. Throws the diagnostic of the call if that fails; `array` is then
/// unchanged.
/// \pre No pointer is null; unchecked.
TVTYPES_API void tvConvertMatrixToEnumObjects(oxArray_tag*& array, const char* enumClassName);

} // namespace TVTypeConv

/// @}
