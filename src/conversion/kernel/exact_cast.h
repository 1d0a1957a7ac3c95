/// \file
/// Detection of loss. A value is kept if it converts back to itself.
///
/// Wrapping, saturating and every rounding mode leave exactly those values unchanged that the
/// destination holds. So whether a value is kept does not depend on the modes, and a plain cast is
/// the conversion of a kept value in every mode.
#pragma once

#include "conversion/kernel/elementwise.h"

namespace {

/// The values that the integer types I and D both hold: a range of 2^n values. The bitwise or of
/// distances from the lowest one is less than 2^n exactly if all distances are.
template <class I, class D>
struct Common {
    static constexpr bool toSigned = isSigned<I> && isSigned<D>;
    static constexpr uint64_T greatestOfI = static_cast<uint64_T>(BoundOf<I>::ub);
    static constexpr uint64_T greatestOfD = static_cast<uint64_T>(BoundOf<D>::ub);

    static constexpr Unsigned<I> lowest =
        toSigned ? static_cast<Unsigned<I>>(BoundOf<D>::lb) : Unsigned<I>(0);
    static constexpr uint64_T greatestDistance = toSigned                    ? 2 * greatestOfD + 1
                                                 : greatestOfI < greatestOfD ? greatestOfI
                                                                             : greatestOfD;

    static Unsigned<I> distance(I x) {
        return static_cast<Unsigned<I>>(static_cast<Unsigned<I>>(x) - lowest);
    }
};

/// Casts with detection of loss.
template <class S, class D>
struct ExactCast {
    /// Casts elements up to the first block with one that is not kept, and returns their number.
    /// NaN is never kept.
    TVTYPES_LOOP static Count cast(const void* source, void* destination, Count count) {
        const auto* src = elements<S>(source);
        auto* dst = elements<D>(destination);
        Count kept = 0;
        while (kept < count) {
            const int length = nextBlock(count - kept);
            if (!castBlock(src + kept, dst + kept, length)) {
                break;
            }
            kept += static_cast<Count>(length);
        }
        return kept;
    }

  private:
    static bool castBlock(const Stored<S>* src, Stored<D>* dst, int count) {
        if constexpr (!isFloat<S> && !isFloat<D>) {
            return castIntegers(src, dst, count);
        } else if constexpr (!isFloat<S> && (isSigned<S> || convertsToUnsigned)) {
            return castAndReturn(src, dst, count);
        } else if constexpr (!isFloat<S>) {
            return castHalves(src, dst, count);
        } else if constexpr (isFloat<D>) {
            return castAndCompare(src, dst, count);
        } else if constexpr (isSame<D, uint32_T> && sizeof(S) == 8) {
            return castBySums(src, dst, count);
        } else if constexpr (isSame<D, uint32_T>) {
            return castByIntegers(src, dst, count) || castBySums(src, dst, count);
        } else {
            return castByIntegers(src, dst, count);
        }
    }

    TVTYPES_LOOP static bool castIntegers(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        Unsigned<S> distances = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const S x = src[i].value;
            dst[i].value = static_cast<D>(x);
            distances = static_cast<Unsigned<S>>(distances | Common<S, D>::distance(x));
        }
        return distances <= Common<S, D>::greatestDistance;
    }

    // A value without an int32 differs from its substitute, or that is out of the range of D.
    TVTYPES_LOOP static bool castByIntegers(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        uint32_T distances = 0;
        Unsigned<S> remainders = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const S x = src[i].value;
            const int32_T integer = integerOf(x);
            dst[i].value = static_cast<D>(integer);
            distances |= Common<int32_T, D>::distance(integer);
            remainders |= bitsOf(static_cast<S>(integer) - x);
        }
        return distances <= Common<int32_T, D>::greatestDistance && isZero(remainders);
    }

    // To uint32, whose values are the last bits of a sum.
    TVTYPES_LOOP static bool castBySums(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        uint64_T others = 0;
        uint64_T remainders = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const real_T x = src[i].value;
            const real_T sum = x + sumOffset;
            dst[i].value = static_cast<D>(bitsOf(sum));
            others |= bitsOf(sum) ^ bitsOf(sumOffset);
            remainders |= bitsOf((sum - sumOffset) - x);
        }
        return others <= BoundOf<D>::ub && isZero(remainders);
    }

    // From 32-bit integers to single. The least int32 is kept, as it is noInteger.
    TVTYPES_LOOP static bool castAndReturn(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        uint32_T differences = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const S x = src[i].value;
            const D y = static_cast<D>(x);
            dst[i].value = y;
            if constexpr (isSigned<S>) {
                differences |= static_cast<uint32_T>(integerOf(y) ^ x);
            } else {
                differences |= static_cast<S>(y < D(twoTo32) ? y : D(0)) ^ x;
            }
        }
        return differences == 0;
    }

    // From uint32 to single: the sum of two halves, which are exact, is rounded as the whole is.
    TVTYPES_LOOP static bool castHalves(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        Unsigned<D> remainders = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const S x = src[i].value;
            const D upper = static_cast<D>(static_cast<int32_T>(x >> 16U)) * D(0x1p16);
            const D lower = static_cast<D>(static_cast<int32_T>(x & 0xFFFFU));
            const D y = upper + lower;
            dst[i].value = y;
            remainders |= bitsOf((y - upper) - lower);
        }
        return isZero(remainders);
    }

    // A remainder of zero may have either sign.
    template <class Bits>
    static bool isZero(Bits bits) {
        return static_cast<Bits>(bits + bits) == 0;
    }

    // double represents the values of both types.
    TVTYPES_LOOP static bool castAndCompare(const Stored<S>* src, Stored<D>* dst, int count) {
        const int length = boundedLength(count);
        uint64_T lost = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const S x = src[i].value;
            const D y = static_cast<D>(x);
            dst[i].value = y;
            lost |= static_cast<real_T>(y) != static_cast<real_T>(x) ? 1U : 0U;
        }
        return lost == 0;
    }
};

} // namespace
