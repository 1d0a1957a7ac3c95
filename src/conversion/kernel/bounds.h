/// \file
/// What the integer types hold.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

// clang-format off
struct Int8Bound   { static constexpr int8_T   lb = -128;            static constexpr int8_T   ub = 127; };
struct Uint8Bound  { static constexpr uint8_T  lb = 0;               static constexpr uint8_T  ub = 255; };
struct Int16Bound  { static constexpr int16_T  lb = -32768;          static constexpr int16_T  ub = 32767; };
struct Uint16Bound { static constexpr uint16_T lb = 0;               static constexpr uint16_T ub = 65535; };
struct Int32Bound  { static constexpr int32_T  lb = -2147483647 - 1; static constexpr int32_T  ub = 2147483647; };
struct Uint32Bound { static constexpr uint32_T lb = 0;               static constexpr uint32_T ub = 4294967295; };
// clang-format on

template <class T>
struct BoundOf;
template <>
struct BoundOf<int8_T> : Int8Bound {};
template <>
struct BoundOf<uint8_T> : Uint8Bound {};
template <>
struct BoundOf<int16_T> : Int16Bound {};
template <>
struct BoundOf<uint16_T> : Uint16Bound {};
template <>
struct BoundOf<int32_T> : Int32Bound {};
template <>
struct BoundOf<uint32_T> : Uint32Bound {};

} // namespace
