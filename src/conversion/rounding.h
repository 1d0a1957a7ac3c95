/// \file
/// Rounding modes. `Mode::whole(x)` is the rounded value in the type of x, with NaN and infinities
/// unchanged, for arithmetic that rounds to nearest. It does not branch, so that loops over it
/// vectorise. The kernels include this file: see conversion/kernel/elements.h for what that
/// forbids.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

// clang-format off
inline real_T   truncated(real_T x)             { return __builtin_trunc(x); }
inline real32_T truncated(real32_T x)           { return __builtin_truncf(x); }
inline real_T   roundedDown(real_T x)           { return __builtin_floor(x); }
inline real32_T roundedDown(real32_T x)         { return __builtin_floorf(x); }
inline real_T   roundedUp(real_T x)             { return __builtin_ceil(x); }
inline real32_T roundedUp(real32_T x)           { return __builtin_ceilf(x); }
inline real_T   roundedByArithmetic(real_T x)   { return __builtin_rint(x); }
inline real32_T roundedByArithmetic(real32_T x) { return __builtin_rintf(x); }
inline real_T   withSignOf(real_T x, real_T magnitude)     { return __builtin_copysign(magnitude, x); }
inline real32_T withSignOf(real32_T x, real32_T magnitude) { return __builtin_copysignf(magnitude, x); }
/// The greatest value below one half. Adding it to a positive value carries exactly the values from
/// half a unit on over the next integer; one half would also carry the value just below.
template <class S> inline constexpr S almostHalf = 0x1.fffffffffffffp-2;
template <> inline constexpr real32_T almostHalf<real32_T> = 0x1.fffffep-2F;
// clang-format on

template <class S>
constexpr bool isNaN(S x) {
    return x != x; // NOLINT(misc-redundant-expression)
}

/// Toward zero.
struct Zero {
    template <class S>
    static S whole(S x) {
        return truncated(x);
    }
};

/// To nearest, ties toward positive infinity.
struct Near {
    template <class S>
    static S whole(S x) {
        const S below = roundedDown(x);
        return below + (x - below >= S(0.5) ? S(1) : S(0));
    }
};

/// Toward positive infinity.
struct Ceil {
    template <class S>
    static S whole(S x) {
        return roundedUp(x);
    }
};

/// Toward negative infinity.
struct Floor {
    template <class S>
    static S whole(S x) {
        return roundedDown(x);
    }
};

/// To nearest, ties away from zero.
struct Round {
    template <class S>
    static S whole(S x) {
        return truncated(x + withSignOf(x, almostHalf<S>));
    }
};

/// To nearest, ties to even: the rounding of the arithmetic itself.
struct Convergent {
    template <class S>
    static S whole(S x) {
        return roundedByArithmetic(x);
    }
};

/// List<> of all modes, in the order of the enumerators of fxpModeRounding_tag.
template <template <class...> class List>
using RoundingModes = List<Zero, Near, Ceil, Floor, Zero, Round, Convergent>;

} // namespace
