/// \file
/// Conversion of one element. `convert(x)` takes every value; conversions from floating point to
/// integers also have two faster steps for values with an int32: integer(x), then
/// narrowed(integer) unless that is noInteger. No branches, so that loops over them vectorise.
#pragma once

#include "conversion/kernel/bounds.h"
#include "conversion/rounding.h"

namespace {

inline constexpr double twoTo31 = 0x1p31;
inline constexpr double twoTo32 = 0x1p32;

/// The conversion of the language: integers wrap, integers become the nearest floating-point value.
template <class S, class D>
struct Cast {
    static_assert(!isFloat<S> || isFloat<D>, "undefined outside the range of an integer");
    using Source = S;
    using Destination = D;
    static D convert(S x) { return static_cast<D>(x); }
};

/// The cast that gives the same bits as Cast<S, D>, one for several pairs of integers: in two's
/// complement the sign of the source matters only if the destination is wider, that of the
/// destination never.
template <class S, class D>
struct SharedCastOf {
    using Type = Cast<typename Select<(sizeof(D) > sizeof(S)), S, Unsigned<S>>::Type, Unsigned<D>>;
};
template <class S, class D>
requires(isFloat<S> || isFloat<D>) struct SharedCastOf<S, D> {
    using Type = Cast<S, D>;
};
template <class S, class D>
using SharedCast = typename SharedCastOf<S, D>::Type;

/// Returns an integral value within the range of D as a D.
template <class D, class S>
inline D fromWhole(S whole) {
    if constexpr (sizeof(D) < 4 || isSigned<D>) {
        return static_cast<D>(integerOf(whole));
    } else if constexpr (sizeof(S) == 8) {
        // Vector instructions convert to signed integers only.
        return static_cast<uint32_T>(integerOf(whole - twoTo31)) ^ 0x80000000U;
    } else {
        const bool isUpper = whole >= S(twoTo31);
        const S rest = whole - (isUpper ? S(twoTo31) : S(0));
        return static_cast<uint32_T>(integerOf(rest)) + (isUpper ? 0x80000000U : 0U);
    }
}

/// Rounds and wraps: the rounded value modulo the range of D; NaN and infinities give 0. In two's
/// complement the sign of D does not matter, so D is unsigned.
template <class S, class D, class Mode>
struct RoundAndWrap {
    static_assert(isFloat<S> && !isSigned<D>);
    using Source = S;
    using Destination = D;

    // Every range divides 2^32, and all steps are exact: the factors are powers of two, and an
    // integer reduced by multiples of 2^32 has no more digits than before.
    static D convert(S x) {
        const S rounded = Mode::whole(x);
        const S times = tiesToEven(rounded * S(1 / twoTo32));
        const S rest = rounded - times * S(twoTo32);
        // From -2^31 to 2^31, or NaN. 2^31 has no int32 and gives noInteger, which is -2^31 and so
        // the same modulo 2^32.
        const S finite = isNaN(rest) ? S(0) : rest;
        return static_cast<D>(integerOf(finite));
    }
    static int32_T integer(S x) { return roundedInteger<Mode>(x); }
    static D narrowed(int32_T integer) { return static_cast<D>(integer); }
};

/// The greatest value of S within the range of D.
template <class S, class D>
inline constexpr S greatestWithin = static_cast<S>(BoundOf<D>::ub);
template <>
inline constexpr real32_T greatestWithin<real32_T, int32_T> = 0x1.fffffep30F;
template <>
inline constexpr real32_T greatestWithin<real32_T, uint32_T> = 0x1.fffffep31F;

/// Limits an int32 to the range of D.
template <class D>
inline D clampedTo(int32_T x) {
    constexpr int32_T lowest = BoundOf<D>::lb;
    constexpr int32_T greatest =
        sizeof(D) < 4 ? static_cast<int32_T>(BoundOf<D>::ub) : BoundOf<int32_T>::ub;
    const int32_T raised = x > lowest ? x : lowest;
    return static_cast<D>(raised < greatest ? raised : greatest);
}

/// Rounds and saturates; NaN gives 0.
template <class S, class D, class Mode>
struct RoundAndSaturate {
    static_assert(isFloat<S> && !isFloat<D>);
    using Source = S;
    using Destination = D;

    // Clamps first: the bounds are integers, so that rounding cannot leave the range again.
    static D convert(S x) {
        constexpr S lowest = static_cast<S>(BoundOf<D>::lb);
        constexpr S greatest = greatestWithin<S, D>;
        // If the lowest value is 0, the comparison with it turns NaN into 0.
        const S number = isSigned<D> && isNaN(x) ? S(0) : x;
        const S raised = number > lowest ? number : lowest;
        const S within = raised < greatest ? raised : greatest;
        D result = fromWhole<D>(Mode::whole(within));
        // If S has no value equal to the upper bound, values above `greatest` are out of range.
        if constexpr (static_cast<D>(greatest) != BoundOf<D>::ub) {
            result = number > greatest ? BoundOf<D>::ub : result;
        }
        return result;
    }
    static int32_T integer(S x) { return roundedInteger<Mode>(x); }
    static D narrowed(int32_T integer) { return clampedTo<D>(integer); }
};

/// Whether an integer of type S can be below or above the range of D.
template <class S, class D>
inline constexpr bool canBeBelow = isSigned<S> && (!isSigned<D> || sizeof(D) < sizeof(S));
template <class S, class D>
inline constexpr bool canBeAbove = static_cast<uint64_T>(BoundOf<S>::ub) >
                                   static_cast<uint64_T>(BoundOf<D>::ub);

/// Saturates an integer, testing only the bounds that a value of S can exceed.
template <class S, class D>
struct Saturate {
    static_assert(canBeBelow<S, D> || canBeAbove<S, D>);
    using Source = S;
    using Destination = D;
    static D convert(S x) {
        if constexpr (canBeBelow<S, D> && canBeAbove<S, D>) {
            return clampedTo<D>(x);
        } else if constexpr (canBeBelow<S, D>) {
            return static_cast<D>(x > S(BoundOf<D>::lb) ? x : S(BoundOf<D>::lb));
        } else {
            return static_cast<D>(x < S(BoundOf<D>::ub) ? x : S(BoundOf<D>::ub));
        }
    }
};

} // namespace
