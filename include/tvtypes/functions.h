/// \file
/// Exported plain functions and texts that belong to no class: values of the built-in types are
/// converted and compared, and go to the host and come back.
///
/// Built-in types are addressed by their ids, 0 to 8 in the order double, single, int8, uint8,
/// int16, uint16, int32, uint32, boolean; ids of aliases are to be resolved first. Vectors may lie
/// at any address. Complex vectors are interleaved, real then imaginary.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint.h>

struct _tvDataTypeAccess_tag;
struct oxArray_tag;
class tvsvDiagnosticImpl;
enum oxClassID : int;
struct tvChecksumValue;

namespace TVTypeSys {
class DataTypeTable;
}

/// The library's version, as numbers with points between them.
extern TVTYPES_API const char libtv_types_version[];

/// When the library was built: the month's three letters, the day and the year.
extern TVTYPES_API const char libtv_types_build_date[];

/// How many types every table holds beside "auto": the nine built-in and the five predefined, 14.
TVTYPES_API int DAGetNumTVDataTypes();

/// \name Struct types by id; an alias stands for the type at the end of its chain
/// Refused with TorvaneTypes::general::InvalidDataTypeId (id) for an id that the table does not
/// have, and by the two of the checksum for one that is no struct.
/// @{

/// Whether the type is a struct that says of itself to be a bus: StructDataType::isBusType. False
/// for -1, "auto".
TVTYPES_API bool DtGetDataTypeIsBus(const TVTypeSys::DataTypeTable* table, int id);

/// The checksum of a struct type, as it has been set.
TVTYPES_API const tvChecksumValue&
DtGetStructDataTypeChecksum(const TVTypeSys::DataTypeTable* table, int id);
TVTYPES_API void DtSetStructDataTypeChecksum(TVTypeSys::DataTypeTable* table, int id,
                                             const tvChecksumValue& value);

/// @}

/// \name Conversion between the built-in types
/// Nothing here fails, allocates or keeps state: every input has a defined output, on every
/// processor the same. Threads may convert at once into buffers that do not overlap.
///
/// - An integer that the destination cannot hold is taken modulo its range, or becomes the nearer
///   bound. A floating-point value is rounded first; NaN becomes 0, an infinity 0 or the bound.
/// - What is not asked for is ignored: rounding of an integer, saturation where nothing overflows.
/// - To `boolean`: 1 if the value is not zero (NaN is not), else 0.
/// - double to single is the IEEE conversion and has no saturating form.
///
/// Ids and modes are not tested: ids must be from 0 to 8 and the modes enumerators.
/// @{

/// Converts `dstCount` elements. A `srcCount` of 0 or 1 says that the source is a scalar which
/// feeds all of them (to `boolean` only 1 says so); otherwise the source holds `dstCount` elements.
/// Real to complex gives imaginary parts of zero, complex to real drops them; a `boolean`
/// destination is one byte an element, complex or not.
///
/// The result is false if `checkLoss` holds and something was lost: an element converted back
/// differs from its source, the source is NaN, or an imaginary part that was dropped is not zero.
/// The destination is written in full either way. The ids and modes are not read: they were
/// settled when the function was selected.
using tvBuiltinDtypeConvFcn = bool (*)(const void* src, void* dst, unsigned long srcCount,
                                       unsigned long dstCount, bool srcIsComplex, bool dstIsComplex,
                                       bool checkLoss, int srcId, int dstId,
                                       fxpModeOverflow_tag overflow, fxpModeRounding_tag rounding);

/// The conversion function of a pair in the given modes. Never null.
TVTYPES_API tvBuiltinDtypeConvFcn utGetTvBuiltinDtypeConvFcn(int srcId, int dstId,
                                                             fxpModeOverflow_tag overflow,
                                                             fxpModeRounding_tag rounding);

/// Selects the conversion function and calls it; the result is the function's.
TVTYPES_API bool tvConvertBuiltInDTypeVectWithCheck(const void* src, unsigned long srcCount,
                                                    int srcId, bool srcIsComplex, void* dst,
                                                    unsigned long dstCount, int dstId,
                                                    bool dstIsComplex, fxpModeOverflow_tag overflow,
                                                    fxpModeRounding_tag rounding, bool checkLoss);

/// The conversion function that built-in types carry: `count` real elements, rounded toward zero
/// and saturated. The ids may be those of aliases. Always 1: a loss is not reported. `context` and
/// `extra` are not read.
TVTYPES_API int ConvertBetweenBuiltinFcn(_tvDataTypeAccess_tag* access, const char* context,
                                         int dstId, int srcId, int count, const void* src,
                                         const void* extra, void* dst);

namespace utdtypeconv {

/// The nearest integral value, ties to even, for `T` double and float. Zero takes the sign of `x`;
/// NaN and the infinities come back as they are.
template <class T>
TVTYPES_API T ScalarConvergentPreInt(T x);

extern template TVTYPES_API double ScalarConvergentPreInt<double>(double x);
extern template TVTYPES_API float ScalarConvergentPreInt<float>(float x);

} // namespace utdtypeconv

namespace TVTypeSys::DataTypeConvOverflowUtilities {

/// Whether any of `count` floating-point elements, rounded in this mode, falls out of the range of
/// the integer type `Dst`; both parts of complex elements count. An infinity does, NaN does not.
/// False for a mode that is none. For `Dst` the six integer types of up to 32 bits, and `Src` float
/// and double.
template <class Dst, class Src>
TVTYPES_API bool CheckFloatVectForConvOverflow(const Src* data, int count, bool isComplex,
                                               fxpModeRounding_tag rounding);

} // namespace TVTypeSys::DataTypeConvOverflowUtilities

/// @}

/// \name Comparison of values of the built-in types
/// The functions that built-in types carry, one of each kind for every element type:
///
/// | Suffix      | Element             | Suffix      | Element               |
/// |-------------|---------------------|-------------|-----------------------|
/// | `real_T`    | double              | `int16_T`   | 16-bit integer        |
/// | `real32_T`  | single              | `uint16_T`  | 16-bit unsigned       |
/// | `int8_T`    | 8-bit integer       | `int32_T`   | 32-bit integer        |
/// | `uint8_T`   | 8-bit unsigned      | `uint32_T`  | 32-bit unsigned       |
/// | `boolean_T` | a byte, as unsigned |             |                       |
///
/// `utIsPositive_*` tests for x > 0, `utIsNegative_*` for x < 0, `utGreaterThan_*` for lhs > rhs
/// and `utGreaterEqual_*` for lhs >= rhs. No test holds for NaN, and -0.0 is not negative. Complex
/// vectors are vectors of twice as many parts. `result` receives a byte an element, 1 or 0; with a
/// `count` below 1 nothing is written. Always 1. The other arguments are not read, nor are the
/// values by `utIsNegative_*` of an unsigned type.
/// @{

#define TVTYPES_DECLARE_COMPARATORS(suffix)                                                        \
    TVTYPES_API int utIsPositive_##suffix(_tvDataTypeAccess_tag* access, const char* context,      \
                                          int dataTypeId, int count, const void* values,           \
                                          const void* extra, void* result);                        \
    TVTYPES_API int utIsNegative_##suffix(_tvDataTypeAccess_tag* access, const char* context,      \
                                          int dataTypeId, int count, const void* values,           \
                                          const void* extra, void* result);                        \
    TVTYPES_API int utGreaterThan_##suffix(_tvDataTypeAccess_tag* access, const char* context,     \
                                           int dataTypeId, int count, const void* lhs,             \
                                           const void* rhs, const void* extra, void* result);      \
    TVTYPES_API int utGreaterEqual_##suffix(_tvDataTypeAccess_tag* access, const char* context,    \
                                            int dataTypeId, int count, const void* lhs,            \
                                            const void* rhs, const void* extra, void* result);

extern "C" {
TVTYPES_DECLARE_COMPARATORS(real_T)
TVTYPES_DECLARE_COMPARATORS(real32_T)
TVTYPES_DECLARE_COMPARATORS(int8_T)
TVTYPES_DECLARE_COMPARATORS(uint8_T)
TVTYPES_DECLARE_COMPARATORS(int16_T)
TVTYPES_DECLARE_COMPARATORS(uint16_T)
TVTYPES_DECLARE_COMPARATORS(int32_T)
TVTYPES_DECLARE_COMPARATORS(uint32_T)
TVTYPES_DECLARE_COMPARATORS(boolean_T)
}

#undef TVTYPES_DECLARE_COMPARATORS

/// @}

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
