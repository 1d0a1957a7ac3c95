/// \file
/// Rounding modes. The only statement of what each mode does: the kernels, the overflow check and
/// the exported scalar function are built on it.
///
/// `Mode::whole(x)` is the rounded value in the type of x, with NaN and infinities unchanged, and
/// roundedInteger<Mode>(x) the same as an int32. Neither branches, so that loops over them
/// vectorise. The kernels include this file: see conversion/kernel/elements.h for what that
/// forbids.
#pragma once

#include "conversion/kernel/elements.h"

namespace {

/// Sentinel for values without an int32 result. INT32_MIN, which is also a valid result.
inline constexpr int32_T noInteger = -2147483647 - 1;

// clang-format off
inline real_T   truncated(real_T x)             { return __builtin_trunc(x); }
inline real32_T truncated(real32_T x)           { return __builtin_truncf(x); }
inline real_T   roundedDown(real_T x)           { return __builtin_floor(x); }
inline real32_T roundedDown(real32_T x)         { return __builtin_floorf(x); }
inline real_T   roundedUp(real_T x)             { return __builtin_ceil(x); }
inline real32_T roundedUp(real32_T x)           { return __builtin_ceilf(x); }
inline real_T   tiesToEven(real_T x)            { return __builtin_rint(x); }
inline real32_T tiesToEven(real32_T x)          { return __builtin_rintf(x); }
/// The greatest value below one half, with the sign of x. Adding it to x carries exactly the values
/// from half a unit on over the next integer; one half would also carry the value just below.
inline real_T   almostHalf(real_T x)            { return __builtin_copysign(0x1.fffffffffffffp-2, x); }
inline real32_T almostHalf(real32_T x)          { return __builtin_copysignf(0x1.fffffep-2F, x); }
// clang-format on

template <class S>
constexpr bool isNaN(S x) {
    return x != x; // NOLINT(misc-redundant-expression)
}

/// Returns the int32 of an integral value, either neighbour of any other value, or noInteger.
template <class S>
int32_T integerOf(S x) {
#if defined(__x86_64__) && !defined(__clang__)
    // One instruction, which is defined for all values; a cast is undefined out of range.
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

/// Returns the rounded value as an int32, or noInteger.
template <class Mode, class S>
inline int32_T roundedInteger(S x) {
    return integerOf(Mode::whole(x));
}

/// Faster than by way of Near::whole. Below 2^31 the sum is exact, except for the predecessor of
/// one half, which it carries to 1.
template <>
inline int32_T roundedInteger<Near, real_T>(real_T x) {
    const real_T carried = x == almostHalf(1.0) ? 1.0 : 0.0;
    return integerOf(roundedDown(x + 0.5) - carried);
}

/// List<> of all modes, in the order of the enumerators of fxpModeRounding_tag.
template <template <class...> class List>
using RoundingModes = List<Zero, Near, Ceil, Floor, Zero, Round, Convergent>;

} // namespace
