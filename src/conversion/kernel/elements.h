/// \file
/// Element types of the kernels and their layout in memory.
///
/// This folder is compiled once for each instruction set. Everything in it has internal linkage and
/// it uses no inline library code: of a function that several objects define, the linker keeps one
/// copy, which may need instructions that an older processor lacks.
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

using Count = unsigned long;

/// An element of a caller's buffer, which may have any alignment and any declared type.
template <class T>
struct __attribute__((packed, may_alias)) Stored {
    T value;
};

template <class T>
const Stored<T>* elements(const void* vector) {
    return static_cast<const Stored<T>*>(vector);
}
template <class T>
Stored<T>* elements(void* vector) {
    return static_cast<Stored<T>*>(vector);
}

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

/// The floating-point value with these bits.
inline real_T valueOf(uint64_T bits) { return __builtin_bit_cast(real_T, bits); }
inline real32_T valueOf(uint32_T bits) { return __builtin_bit_cast(real32_T, bits); }

/// The unsigned type with a size in bytes.
template <unsigned long size>
struct UnsignedOfSize;
template <>
struct UnsignedOfSize<1> {
    using Type = uint8_T;
};
template <>
struct UnsignedOfSize<2> {
    using Type = uint16_T;
};
template <>
struct UnsignedOfSize<4> {
    using Type = uint32_T;
};
template <>
struct UnsignedOfSize<8> {
    using Type = uint64_T;
};

/// The unsigned type of the width of T. Used for arithmetic that wraps.
template <class T>
using Unsigned = typename UnsignedOfSize<sizeof(T)>::Type;

/// Selects A if `condition` is true, otherwise B.
template <bool condition, class A, class B>
struct Select {
    using Type = A;
};
template <class A, class B>
struct Select<false, A, B> {
    using Type = B;
};

/// The type that moves the bits of a T: signed integers share the loops of unsigned ones.
template <class T>
using Bits = typename Select<isFloat<T>, T, Unsigned<T>>::Type;

/// Elements that are converted, checked and rearranged at a time: few enough to stay in the
/// first-level cache in between.
inline constexpr int blockLength = 512;

/// Returns the length of the next block.
inline int nextBlock(Count count) {
    return count < blockLength ? static_cast<int>(count) : blockLength;
}

/// Returns the length of a block, 1 to blockLength. That range lets the compiler unroll loops over
/// blocks of short elements completely.
inline int boundedLength(int count) {
    if (count < 1 || count > blockLength) {
        __builtin_unreachable();
    }
    return count;
}

} // namespace

/// A loop that is compiled once, not into each caller.
#define TVTYPES_LOOP __attribute__((noinline))

/// Before a loop over two buffers: they do not overlap. Compilers other than g++ test that at run
/// time.
#if defined(__clang__)
#define TVTYPES_INDEPENDENT
#else
#define TVTYPES_INDEPENDENT _Pragma("GCC ivdep")
#endif
