/// \file
/// The senses of rounding. whole(x) is the rounded value, still of its type; NaN and infinities
/// stay what they are. There are no branches here, so that a loop over them becomes vector code.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

/// Stands for what has no place among the integers, and for the lowest one, which is its value.
inline constexpr int32_T noInteger = -2147483647 - 1;

// clang-format off
inline real_T   truncated(real_T x)             { return __builtin_trunc(x); }
inline real32_T truncated(real32_T x)           { return __builtin_truncf(x); }
inline real_T   floorOf(real_T x)               { return __builtin_floor(x); }
inline real32_T floorOf(real32_T x)             { return __builtin_floorf(x); }
inline real_T   ceilOf(real_T x)                { return __builtin_ceil(x); }
inline real32_T ceilOf(real32_T x)              { return __builtin_ceilf(x); }
inline real_T   tiesToEven(real_T x)            { return __builtin_rint(x); }
inline real32_T tiesToEven(real32_T x)          { return __builtin_rintf(x); }
/// The greatest value below one half, with the sign of x. Added to x, it carries exactly the values
/// from half a unit on over the next integer: one half itself would also carry the one just below.
inline real_T   almostHalf(real_T x)            { return __builtin_copysign(0x1.fffffffffffffp-2, x); }
inline real32_T almostHalf(real32_T x)          { return __builtin_copysignf(0x1.fffffep-2F, x); }
// clang-format on

/// The integer of a whole value, one of the two beside any other, or noInteger.
template <class S>
int32_T integerOf(S x) {
#if defined(__x86_64__) && !defined(__clang__)
    // One instruction, which answers just so; the language alone would leave that open.
    if constexpr (sizeof(S) == 8) {
        return __builtin_irint(x);
    } else {
        return __builtin_irintf(x);
    }
#else
    const bool fits = x > S(-0x1p31) && x < S(0x1p31);
    const int32_T integer = static_cast<int32_T>(fits ? x : S(0));
    return fits ? integer : noInteger;
#endif
}

struct Zero {
    template <class S>
    static S whole(S x) {
        return truncated(x);
    }
};

struct Floor {
    template <class S>
    static S whole(S x) {
        return floorOf(x);
    }
};

struct Ceil {
    template <class S>
    static S whole(S x) {
        return ceilOf(x);
    }
};

/// To nearest, ties toward positive infinity.
struct Near {
    template <class S>
    static S whole(S x) {
        const S below = floorOf(x);
        return below + (x - below >= S(0.5) ? S(1) : S(0));
    }
};

/// To nearest, ties away from zero.
struct Round {
    template <class S>
    static S whole(S x) {
        return truncated(x + almostHalf(x));
    }
};

/// To nearest, ties to even: the rounding of the arithmetic itself.
struct Convergent {
    template <class S>
    static S whole(S x) {
        return tiesToEven(x);
    }
};

/// The rounded value as an integer, or noInteger.
template <class Sense, class S>
int32_T roundedInteger(S x) {
    if constexpr (isSame<Sense, Near> && sizeof(S) == 8) {
        // Below 2^31 the sum is exact, but for the value next to one half, which it carries to 1.
        const S carried = x == almostHalf(S(1)) ? S(1) : S(0);
        return integerOf(floorOf(x + S(0.5)) - carried);
    } else {
        return integerOf(Sense::whole(x));
    }
}

} // namespace
