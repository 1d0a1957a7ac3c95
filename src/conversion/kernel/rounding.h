/// \file
/// The senses of rounding. Each gives the rounded value in two forms:
///
/// - whole(x): still a floating-point value, for every x; NaN and infinities stay what they are.
/// - small(x): as an integer, for |x| below smallLimit, in fewer steps.
///
/// There are no branches here, so that a loop over them becomes vector code.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

/// Where small() may be used. Twice as much and one more is still an int32_T.
inline constexpr double smallLimit = 0x1p29;

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

struct Zero {
    template <class S>
    static S whole(S x) {
        return truncated(x);
    }
    template <class S>
    static int32_T small(S x) {
        return static_cast<int32_T>(x);
    }
};

struct Floor {
    template <class S>
    static S whole(S x) {
        return floorOf(x);
    }
    template <class S>
    static int32_T small(S x) {
        return static_cast<int32_T>(floorOf(x));
    }
};

struct Ceil {
    template <class S>
    static S whole(S x) {
        return ceilOf(x);
    }
    template <class S>
    static int32_T small(S x) {
        return static_cast<int32_T>(ceilOf(x));
    }
};

/// To nearest, ties toward positive infinity.
struct Near {
    template <class S>
    static S whole(S x) {
        const S below = floorOf(x);
        return below + (x - below >= S(0.5) ? S(1) : S(0));
    }
    // The count of half units below x is exact; half of it, rounded up, is the result.
    template <class S>
    static int32_T small(S x) {
        return (static_cast<int32_T>(floorOf(x + x)) + 1) >> 1;
    }
};

/// To nearest, ties away from zero.
struct Round {
    template <class S>
    static S whole(S x) {
        return truncated(x + almostHalf(x));
    }
    template <class S>
    static int32_T small(S x) {
        return static_cast<int32_T>(x + almostHalf(x));
    }
};

/// To nearest, ties to even: the rounding of the arithmetic itself.
struct Convergent {
    template <class S>
    static S whole(S x) {
        return tiesToEven(x);
    }
    template <class S>
    static int32_T small(S x) {
        return static_cast<int32_T>(tiesToEven(x));
    }
};

} // namespace
