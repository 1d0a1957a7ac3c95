/// \file
/// The elements that the kernels work on, and how they lie in memory.
///
/// Everything below this folder is compiled once for each instruction set. All of it has internal
/// linkage and nothing of it uses inline library code: of a function that several objects share,
/// the linker keeps one copy, and that could be one which an older processor cannot run.
#pragma once

namespace {

using real_T = double;
using real32_T = float;
using int8_T = signed char;
using uint8_T = unsigned char;
using int16_T = short;
using uint16_T = unsigned short;
using int32_T = int;
using uint32_T = unsigned int;
using uint64_T = unsigned long;

static_assert(sizeof(int16_T) == 2 && sizeof(int32_T) == 4 && sizeof(uint64_T) == 8);
static_assert(sizeof(real32_T) == 4 && sizeof(real_T) == 8);

/// An element in a caller's buffer, which may lie at any address and be declared as any type.
template <class T>
struct __attribute__((packed, may_alias)) Stored {
    T value;
};

template <class T>
inline constexpr bool isFloat = false;
template <>
inline constexpr bool isFloat<real_T> = true;
template <>
inline constexpr bool isFloat<real32_T> = true;

template <class T>
inline constexpr bool isSigned = T(-1) < T(0);

template <class A, class B>
inline constexpr bool isSame = false;
template <class A>
inline constexpr bool isSame<A, A> = true;

/// The bits of a floating-point value.
inline uint64_T bitsOf(real_T x) { return __builtin_bit_cast(uint64_T, x); }
inline uint32_T bitsOf(real32_T x) { return __builtin_bit_cast(uint32_T, x); }

/// The unsigned type of the width of T, in which what wraps is computed.
template <class T>
struct UnsignedOf {
    using Type = T;
};
template <>
struct UnsignedOf<int8_T> {
    using Type = uint8_T;
};
template <>
struct UnsignedOf<int16_T> {
    using Type = uint16_T;
};
template <>
struct UnsignedOf<int32_T> {
    using Type = uint32_T;
};
template <>
struct UnsignedOf<real32_T> {
    using Type = uint32_T;
};
template <>
struct UnsignedOf<real_T> {
    using Type = uint64_T;
};
template <class T>
using Unsigned = typename UnsignedOf<T>::Type;

} // namespace

/// A loop that is one function wherever it is called from.
#define TVTYPES_LOOP __attribute__((noinline))

/// Before a loop over two buffers: they do not overlap. Others than g++ find out at run time.
#if defined(__clang__)
#define TVTYPES_INDEPENDENT
#else
#define TVTYPES_INDEPENDENT _Pragma("GCC ivdep")
#endif
