/// \file
/// Comparison of values of the built-in types.
#pragma once

#include <tvtypes/export.h>

struct _tvDataTypeAccess_tag;

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
