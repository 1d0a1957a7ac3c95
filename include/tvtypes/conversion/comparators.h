/// \file
/// Comparators of the built-in types: the functions in their records for getIsPositiveFcn() and the
/// other comparisons.
#pragma once

#include <tvtypes/export.h>

/// \addtogroup conversion
/// @{

struct _tvDataTypeAccess_tag;

/// \cond
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
/// \endcond

extern "C" {
/// \name Comparators of the built-in types
/// @{

/// One function of each kind for every element type:
///
/// | Suffix      | Element             | Suffix      | Element               |
/// |-------------|---------------------|-------------|-----------------------|
/// | `real_T`    | double              | `int16_T`   | 16-bit integer        |
/// | `real32_T`  | single              | `uint16_T`  | 16-bit unsigned       |
/// | `int8_T`    | 8-bit integer       | `int32_T`   | 32-bit integer        |
/// | `uint8_T`   | 8-bit unsigned      | `uint32_T`  | 32-bit unsigned       |
/// | `boolean_T` | a byte, as unsigned |             |                       |
///
/// `utIsPositive_*` tests x > 0, `utIsNegative_*` x < 0, `utGreaterThan_*` lhs > rhs and
/// `utGreaterEqual_*` lhs >= rhs. Every test with NaN is false, and -0.0 is not negative. Subnormal
/// numbers are not zero, in any floating-point environment.
///
/// `count` is the number of elements; pass twice the number for complex vectors, whose parts are
/// compared one by one. Vectors may have any alignment. `result` receives one byte an element, 1 or
/// 0. Nothing is read or written if `count` is below 1. `access`, `context`, `dataTypeId` and
/// `extra` are ignored, as are the values by `utIsNegative_*` of an unsigned type.
///
/// The functions return 1 and do not fail.
/// \pre The vectors have `count` elements and `result` has `count` bytes; neither is checked.
TVTYPES_DECLARE_COMPARATORS(real_T)
TVTYPES_DECLARE_COMPARATORS(real32_T)
TVTYPES_DECLARE_COMPARATORS(int8_T)
TVTYPES_DECLARE_COMPARATORS(uint8_T)
TVTYPES_DECLARE_COMPARATORS(int16_T)
TVTYPES_DECLARE_COMPARATORS(uint16_T)
TVTYPES_DECLARE_COMPARATORS(int32_T)
TVTYPES_DECLARE_COMPARATORS(uint32_T)
TVTYPES_DECLARE_COMPARATORS(boolean_T)

/// @}
}

#undef TVTYPES_DECLARE_COMPARATORS

/// @}
