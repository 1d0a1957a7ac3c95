/// \file
/// Functions that a client registers with a type to work on its values.
#pragma once

/// \addtogroup registry
/// @{

struct _tvDataTypeAccess_tag;
struct ExternalSim_tag;

namespace TVTypeSys {

/// \name Functions on arrays of values
/// @{

/// Function on an array of values. Returns 0 on failure and any other value on success.
/// - `access` identifies the calling table.
/// - `context` is null in calls by the table.
/// - The ids are those at the ends of the alias chains.
/// - `count` is the number of elements.
/// - `extra` is the caller's argument, passed on unread.
/// - A test writes one byte for each element to `result`: 1 where it holds, else 0.
using ConvertBetweenFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dstId,
                                  int srcId, int count, const void* src, const void* extra,
                                  void* dst);
using IsPositiveFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dataTypeId,
                              int count, const void* values, const void* extra, void* result);
using IsNegativeFcn = IsPositiveFcn;
using GreaterThanFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dataTypeId,
                               int count, const void* lhs, const void* rhs, const void* extra,
                               void* result);
using GreaterEqualFcn = GreaterThanFcn;
/// @}

/// \name Transfer of values between host and target
/// @{

/// Function that copies a value between host and target. The library stores it and never calls it;
/// the client defines the meaning of the two last arguments.
using HostToTargetFcn = void (*)(ExternalSim_tag* sim, char* target, const void* host, int, int);
using TargetToHostFcn = void (*)(ExternalSim_tag* sim, void* host, const char* target, int, int);
/// @}

/// The five functions on the values of one type; each may be null.
struct DataTypeFunctions {
    ConvertBetweenFcn convertBetween = nullptr; ///< converts from or to the type
    IsPositiveFcn isPositive = nullptr;         ///< tests x > 0
    IsNegativeFcn isNegative = nullptr;         ///< tests x < 0
    GreaterThanFcn greaterThan = nullptr;       ///< tests lhs > rhs
    GreaterEqualFcn greaterEqual = nullptr;     ///< tests lhs >= rhs
};

} // namespace TVTypeSys

/// @}
