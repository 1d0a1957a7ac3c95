/// \file
/// Least and greatest values of the integer types.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

template <class T>
struct BoundOf;

// clang-format off
template <> struct BoundOf<int8_T>   { static constexpr int8_T   lb = -128;            static constexpr int8_T   ub = 127; };
template <> struct BoundOf<uint8_T>  { static constexpr uint8_T  lb = 0;               static constexpr uint8_T  ub = 255; };
template <> struct BoundOf<int16_T>  { static constexpr int16_T  lb = -32768;          static constexpr int16_T  ub = 32767; };
template <> struct BoundOf<uint16_T> { static constexpr uint16_T lb = 0;               static constexpr uint16_T ub = 65535; };
template <> struct BoundOf<int32_T>  { static constexpr int32_T  lb = -2147483647 - 1; static constexpr int32_T  ub = 2147483647; };
template <> struct BoundOf<uint32_T> { static constexpr uint32_T lb = 0;               static constexpr uint32_T ub = 4294967295; };
// clang-format on

} // namespace
