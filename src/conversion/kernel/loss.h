/// \file
/// What a conversion can lose. A value is kept if it comes back the same from the destination.
///
/// Wrapping, saturating and every rounding leave alone exactly the values that the destination
/// holds. So whether a value is kept is a question to the value alone, the same in all modes; and
/// what is kept needs only a plain cast, whatever the mode.
#pragma once

#include "conversion/kernel/blocks.h"

namespace {

/// Nothing can be lost.
struct NoDiff {};

/// The values that the integer types I and D both hold: 2^n of them in a row. So their distances
/// from the lowest, joined by "or", tell of all at once whether they are in the row.
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

/// The integers whose digits a single always has.
template <class I>
struct Common<I, real32_T> {
    static constexpr Unsigned<I> lowest = isSigned<I> ? Unsigned<I>(-0x1000000) : Unsigned<I>(0);
    static constexpr uint64_T greatestDistance = isSigned<I> ? 0x1FFFFFF : 0xFFFFFF;

    static Unsigned<I> distance(I x) { return static_cast<Unsigned<I>>(x) - lowest; }
};

/// Holds every value against its own conversion.
template <class S, class D>
struct CastDiff {
    /// Casts a block and tells whether all of it was kept; NaN never is. If not, what was written
    /// is not the result yet.
    static bool cast(const Stored<S>* src, Stored<D>* dst, int count) {
        if constexpr (!isFloat<S> && !isFloat<D>) {
            return castIntegers(src, dst, count);
        } else if constexpr (!isFloat<S>) {
            return castIntegers(src, dst, count) || castAndCompare(src, dst, count);
        } else if constexpr (isFloat<D>) {
            return castAndCompare(src, dst, count);
        } else if constexpr (sizeof(D) == 4 && !isSigned<D>) {
            return castByIntegers(src, dst, count) || castShifted(src, dst, count);
        } else {
            return castByIntegers(src, dst, count);
        }
    }

  private:
    TVTYPES_LOOP static bool castIntegers(const Stored<S>* src, Stored<D>* dst, int count) {
        Unsigned<S> distances = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            const S x = src[i].value;
            dst[i].value = static_cast<D>(x);
            distances = static_cast<Unsigned<S>>(distances | Common<S, D>::distance(x));
        }
        return distances <= Common<S, D>::greatestDistance;
    }

    // What has no integer differs from it, or is out of the range of a shorter D.
    TVTYPES_LOOP static bool castByIntegers(const Stored<S>* src, Stored<D>* dst, int count) {
        uint32_T distances = 0;
        Unsigned<S> remainders = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            const S x = src[i].value;
            const int32_T integer = integerOf(x);
            dst[i].value = static_cast<D>(integer);
            distances |= Common<int32_T, D>::distance(integer);
            remainders |= bitsOf(static_cast<S>(integer) - x);
        }
        return distances <= Common<int32_T, D>::greatestDistance && isZero(remainders);
    }

    // All of uint32_T, which int32_T holds when it is moved down by half its range.
    TVTYPES_LOOP static bool castShifted(const Stored<S>* src, Stored<D>* dst, int count) {
        uint64_T remainders = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            const real_T x = src[i].value;
            const int32_T integer = integerOf(x - twoTo31);
            dst[i].value = static_cast<D>(static_cast<uint32_T>(integer) ^ 0x80000000U);
            remainders |= bitsOf((static_cast<real_T>(integer) + twoTo31) - x);
        }
        return isZero(remainders);
    }

    // A remainder of zero may have either sign.
    template <class Bits>
    static bool isZero(Bits bits) {
        return static_cast<Bits>(bits + bits) == 0;
    }

    // double holds the values of both sides.
    TVTYPES_LOOP static bool castAndCompare(const Stored<S>* src, Stored<D>* dst, int count) {
        uint64_T lost = 0;
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            const S x = src[i].value;
            const D y = static_cast<D>(x);
            dst[i].value = y;
            lost |= static_cast<real_T>(y) != static_cast<real_T>(x) ? 1U : 0U;
        }
        return lost == 0;
    }
};

} // namespace
