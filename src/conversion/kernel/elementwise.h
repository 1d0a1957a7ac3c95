/// \file
/// Conversion of one element. `convert(x)` takes every value. Most conversions from floating point
/// to integers also have convertQuickly(x, evidence), which takes fewer steps, and
/// isValid(evidence), which says whether it has converted every element of a loop. Conversions with
/// rounding need arithmetic that rounds in `direction` if they are directed. All others need the
/// default environment. No branches, so that loops vectorise.
#pragma once

#include "conversion/kernel/bounds.h"
#include "conversion/kernel/directed_rounding.h"

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

/// Whether there are instructions that convert floating point to unsigned integers.
#if defined(__AVX512F__)
inline constexpr bool convertsToUnsigned = true;
#else
inline constexpr bool convertsToUnsigned = false;
#endif

/// Returns integerOf(x) as a D. \pre The result is within the range of D.
template <class D, class S>
inline D integerWithin(S x) {
    if constexpr (sizeof(D) < 4 || isSigned<D>) {
        return static_cast<D>(integerOf(x));
    } else if constexpr (convertsToUnsigned) {
        return static_cast<uint32_T>(roundedByArithmetic(x));
    } else {
        const bool isUpper = x >= S(twoTo31);
        const S rest = x - (isUpper ? S(twoTo31) : S(0));
        return static_cast<uint32_T>(integerOf(rest)) + (isUpper ? 0x80000000U : 0U);
    }
}

/// Rounds and wraps: the rounded value modulo the range of D; NaN and infinities give 0. In two's
/// complement the sign of D does not matter, so D is unsigned.
template <class S, class D, class Mode, bool isDirected>
struct RoundAndWrap {
    static_assert(isFloat<S> && !isSigned<D>);
    using Source = S;
    using Destination = D;
    static constexpr RoundingDirection direction = Rounding<Mode, S, isDirected>::direction;
    /// Whether noInteger is right for all values without an int32: such singles are multiples of
    /// 256.
    static constexpr bool isTotal = sizeof(S) == 4 && sizeof(D) == 1;
    /// Whether values below 2^51 are converted by one sum: if an instruction narrows 64 bits.
#if defined(__AVX512F__)
    static constexpr bool bySums = sizeof(S) == 8;
#else
    static constexpr bool bySums = false;
#endif
    Rounding<Mode, S, isDirected> rounding;

    D convert(S x) const {
        if constexpr (isTotal) {
            return static_cast<D>(integerOf(rounding.prepared(x)));
        } else if constexpr (dependsOnSign<Mode> && sizeof(S) == 8) {
            // The rest of a fraction may have another sign.
            return static_cast<D>(integerOf(rest(truncated(rounding.prepared(x)))));
        } else {
            return static_cast<D>(integerOf(rounding.prepared(rest(x))));
        }
    }

    static constexpr bool isQuick = !isTotal;
    /// By 32-bit integers: the least of them. By sums: the bits that differ from those of
    /// sumOffset.
    using Evidence = typename Select<bySums, uint64_T, int32_T>::Type;
    D convertQuickly(S x, Evidence& evidence) const {
        if constexpr (bySums) {
            const uint64_T sum = bitsOf(rounding.sum(x));
            evidence |= sum ^ bitsOf(sumOffset);
            return static_cast<D>(sum);
        } else {
            const int32_T integer = integerOf(rounding.prepared(x));
            evidence = integer < evidence ? integer : evidence;
            return static_cast<D>(integer);
        }
    }
    static bool isValid(Evidence evidence) {
        if constexpr (bySums) {
            return evidence < 1UL << 52U; // sign and exponent are those of sumOffset
        } else {
            return evidence != noInteger;
        }
    }

  private:
    /// Returns x modulo 2^32, which every range divides, from -2^31 to 2^31. 2^31 has no int32 and
    /// gives noInteger, which is the same modulo 2^32. Exact: the factors are powers of two, and
    /// the rest has no more digits than x.
    S rest(S x) const {
        const S rest = x - rounding.nearest(x * S(1 / twoTo32)) * S(twoTo32);
        // Modulo shorter ranges noInteger is 0, as NaN has to be.
        return sizeof(D) == 4 && isNaN(rest) ? S(0) : rest;
    }
};

/// The greatest value of S within the range of D.
template <class S, class D>
inline constexpr S greatestWithin = static_cast<S>(BoundOf<D>::ub);
template <>
inline constexpr real32_T greatestWithin<real32_T, int32_T> = 0x1.fffffep30F;
template <>
inline constexpr real32_T greatestWithin<real32_T, uint32_T> = 0x1.fffffep31F;

/// Limits a value that is not NaN to the range of D, which has negative and positive values.
template <class D, class S>
inline S limitedTo(S x) {
    constexpr S lowest = static_cast<S>(BoundOf<D>::lb);
    constexpr S greatest = static_cast<S>(BoundOf<D>::ub);
#if defined(__AVX512F__)
    // In place of the less of two floating-point numbers, g++ has a comparison and a selection with
    // a mask. Their bits have the order of positive numbers if taken as signed integers, and the
    // reverse order of negative numbers if taken as unsigned ones.
    using Signed = typename Select<sizeof(S) == 8, long, int>::Type;
    const auto raised = bitsOf(x) < bitsOf(lowest) ? bitsOf(x) : bitsOf(lowest);
    const auto isLess = static_cast<Signed>(raised) < static_cast<Signed>(bitsOf(greatest));
    return valueOf(isLess ? raised : bitsOf(greatest));
#else
    const S raised = x > lowest ? x : lowest;
    return raised < greatest ? raised : greatest;
#endif
}

/// Limits an int32 to the range of D.
template <class D>
inline D clampedTo(int32_T x) {
    constexpr int32_T lowest = BoundOf<D>::lb;
    constexpr auto greatest = static_cast<int32_T>(BoundOf<D>::ub);
    const int32_T raised = x > lowest ? x : lowest;
    return static_cast<D>(raised < greatest ? raised : greatest);
}

/// Rounds and saturates; NaN gives 0.
template <class S, class D, class Mode, bool isDirected>
struct RoundAndSaturate {
    static_assert(isFloat<S> && !isFloat<D>);
    using Source = S;
    using Destination = D;
    static constexpr RoundingDirection direction = Rounding<Mode, S, isDirected>::direction;
    Rounding<Mode, S, isDirected> rounding;

    // Clamps first: the bounds are integers, so that rounding cannot leave the range again.
    D convert(S x) const {
        if constexpr (isSigned<D> && sizeof(D) < 4) {
            const S number = isNaN(x) ? S(0) : x;
            return integerWithin<D>(rounding.prepared(limitedTo<D>(number)));
        } else {
            constexpr S greatest = greatestWithin<S, D>;
            // Values below the range of int32 give noInteger, its least value. The comparison with
            // 0 turns NaN into 0.
            const S number = isSigned<D> ? (isNaN(x) ? S(0) : x) : (x > S(0) ? x : S(0));
            const S within = number < greatest ? number : greatest;
            if constexpr (isSame<S, real_T> && isSame<D, uint32_T>) {
                return static_cast<D>(bitsOf(rounding.sum(within)));
            } else {
                const D result = integerWithin<D>(rounding.prepared(within));
                // single has no value equal to the upper bound of 32 bits.
                constexpr bool hasBound = static_cast<D>(greatest) == BoundOf<D>::ub;
                return !hasBound && number > greatest ? BoundOf<D>::ub : result;
            }
        }
    }

    /// Values within the range of int32 are clamped after the conversion to that.
    static constexpr bool isQuick = !isSame<D, uint32_T>;
    /// The least int32.
    using Evidence = int32_T;
    D convertQuickly(S x, int32_T& evidence) const {
        const int32_T integer = integerOf(rounding.prepared(x));
        evidence = integer < evidence ? integer : evidence;
        return clampedTo<D>(integer);
    }
    static bool isValid(int32_T evidence) { return evidence != noInteger; }
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
            const S raised = x > S(BoundOf<D>::lb) ? x : S(BoundOf<D>::lb);
            return static_cast<D>(raised < S(BoundOf<D>::ub) ? raised : S(BoundOf<D>::ub));
        } else if constexpr (canBeBelow<S, D>) {
            return static_cast<D>(x > S(BoundOf<D>::lb) ? x : S(BoundOf<D>::lb));
        } else {
            return static_cast<D>(x < S(BoundOf<D>::ub) ? x : S(BoundOf<D>::ub));
        }
    }
};

} // namespace
