/// \file
/// What becomes of one value on its way from one type to another. Each policy has conv, for every
/// value. Those that round do the same in two steps, too: integer(x), and narrowed(integer) where
/// that is not noInteger. All are without branches, so that a loop over them becomes vector code.
#pragma once

#include "conversion/kernel/bounds.h"
#include "conversion/kernel/rounding.h"

namespace {

inline constexpr double twoTo31 = 0x1p31;
inline constexpr double twoTo32 = 0x1p32;

/// The integer D of a whole value within its range.
template <class D, class S>
inline D fromWhole(S whole) {
    if constexpr (sizeof(D) < 4 || isSigned<D>) {
        return static_cast<D>(integerOf(whole));
    } else if constexpr (sizeof(S) == 8) {
        // Vectors convert to signed integers only.
        return static_cast<uint32_T>(integerOf(whole - twoTo31)) ^ 0x80000000U;
    } else {
        const bool isUpper = whole >= S(twoTo31);
        const S rest = whole - (isUpper ? S(twoTo31) : S(0));
        return static_cast<uint32_T>(integerOf(rest)) + (isUpper ? 0x80000000U : 0U);
    }
}

template <class S, class D>
struct NoConv {
    static void conv(const S* in, D* out) { *out = *in; }
};

/// The language's conversion: integers wrap, floating-point values are truncated and must be in
/// range.
template <class S, class D>
struct Cast_Conv {
    static void conv(const S* in, D* out) {
        if constexpr (isFloat<S> && !isFloat<D>) {
            *out = fromWhole<D>(Zero::whole(*in));
        } else {
            *out = static_cast<D>(*in);
        }
    }
    static int32_T integer(S x) requires isFloat<S> { return roundedInteger<Zero>(x); }
};

/// Rounds a value whose rounded form is in range.
template <class S, class D, class Sense>
struct RoundingConv {
    static void conv(const S* in, D* out) { *out = fromWhole<D>(Sense::whole(*in)); }
    static int32_T integer(S x) { return roundedInteger<Sense>(x); }
};
// clang-format off
template <class S, class D> using Near_Conv       = RoundingConv<S, D, Near>;
template <class S, class D> using Ceil_Conv       = RoundingConv<S, D, Ceil>;
template <class S, class D> using Floor_Conv      = RoundingConv<S, D, Floor>;
template <class S, class D> using Round_Conv      = RoundingConv<S, D, Round>;
template <class S, class D> using Convergent_Conv = RoundingConv<S, D, Convergent>;
// clang-format on

/// Wraps: the rounded value modulo the range of D; NaN and infinities give 0.
template <class S, class D, class Sense>
struct WrappingConv {
    // Every range divides 2^32, and all steps are exact: the factors are powers of two, and what is
    // left of an integer after whole multiples of 2^32 has no more digits than it had.
    static void conv(const S* in, D* out) {
        const S rounded = Sense::whole(*in);
        const S times = tiesToEven(rounded * S(1 / twoTo32));
        const S rest = rounded - times * S(twoTo32);
        // From -2^31 to 2^31, or NaN. The upper end has no integer, and is the same as the lower
        // one.
        const S finite = rest == rest ? rest : S(0);
        *out = static_cast<D>(integerOf(finite));
    }
    static int32_T integer(S x) { return roundedInteger<Sense>(x); }
    static D narrowed(int32_T integer) { return static_cast<D>(integer); }
};

// Two's complement makes one policy of a signed destination and an unsigned one.
// clang-format off
template <class S, class D> using Zero_Wrap_Signed_Conv         = WrappingConv<S, D, Zero>;
template <class S, class D> using Near_Wrap_Signed_Conv         = WrappingConv<S, D, Near>;
template <class S, class D> using Ceil_Wrap_Signed_Conv         = WrappingConv<S, D, Ceil>;
template <class S, class D> using Floor_Wrap_Signed_Conv        = WrappingConv<S, D, Floor>;
template <class S, class D> using Round_Wrap_Signed_Conv        = WrappingConv<S, D, Round>;
template <class S, class D> using Convergent_Wrap_Signed_Conv   = WrappingConv<S, D, Convergent>;
template <class S, class D> using Zero_Wrap_Unsigned_Conv       = WrappingConv<S, D, Zero>;
template <class S, class D> using Near_Wrap_Unsigned_Conv       = WrappingConv<S, D, Near>;
template <class S, class D> using Ceil_Wrap_Unsigned_Conv       = WrappingConv<S, D, Ceil>;
template <class S, class D> using Floor_Wrap_Unsigned_Conv      = WrappingConv<S, D, Floor>;
template <class S, class D> using Round_Wrap_Unsigned_Conv      = WrappingConv<S, D, Round>;
template <class S, class D> using Convergent_Wrap_Unsigned_Conv = WrappingConv<S, D, Convergent>;
// clang-format on

/// The greatest value of S that is within the range of D.
template <class S, class D>
inline constexpr S greatestWithin = static_cast<S>(BoundOf<D>::ub);
template <>
inline constexpr real32_T greatestWithin<real32_T, int32_T> = 0x1.fffffep30F;
template <>
inline constexpr real32_T greatestWithin<real32_T, uint32_T> = 0x1.fffffep31F;

/// Saturates on both sides. Inner converts what is within the range; NaN gives 0.
template <class S, class D, class Bound, class Inner>
struct Sat_Conv {
    static void conv(const S* in, D* out) {
        if constexpr (isFloat<S>) {
            constexpr S lowest = static_cast<S>(Bound::lb);
            constexpr S greatest = greatestWithin<S, D>;
            // Where the lowest value is 0, the comparison with it turns NaN into 0.
            const S number = !isSigned<D> || *in == *in ? *in : S(0);
            const S raised = number > lowest ? number : lowest;
            const S within = raised < greatest ? raised : greatest;
            D inner;
            Inner::conv(&within, &inner);
            // Where S has no such value as the upper bound, the first one above it tells.
            if constexpr (static_cast<D>(greatest) != Bound::ub) {
                inner = number > greatest ? Bound::ub : inner;
            }
            *out = inner;
        } else {
            *out = narrowed(*in);
        }
    }
    static int32_T integer(S x) { return Inner::integer(x); }
    static D narrowed(int32_T x) {
        constexpr int32_T lowest = Bound::lb;
        constexpr int32_T greatest =
            sizeof(D) < 4 ? static_cast<int32_T>(Bound::ub) : Int32Bound::ub;
        const int32_T raised = x > lowest ? x : lowest;
        return static_cast<D>(raised < greatest ? raised : greatest);
    }
};

/// Saturates an integer that can only pass the lower bound, which is 0.
template <class S, class D, class Bound>
struct Sat_Lb_Conv {
    static void conv(const S* in, D* out) {
        *out = static_cast<D>(*in > S(Bound::lb) ? *in : S(Bound::lb));
    }
};

/// Saturates an integer that can only pass the upper bound, which S holds.
template <class S, class D, class Bound>
struct Sat_Ub_Conv {
    static void conv(const S* in, D* out) {
        *out = static_cast<D>(*in < S(Bound::ub) ? *in : S(Bound::ub));
    }
};

} // namespace
