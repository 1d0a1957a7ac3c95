/// \file
/// Loops over one block of elements. Each expands one policy or one question and has no branches
/// inside, so that it becomes vector code.
#pragma once

#include "conversion/kernel/policies.h"

namespace {

using Count = unsigned long;

/// How many elements are looked at, converted and checked at a time: few enough to stay in the
/// processor's first cache in between.
inline constexpr int blockLength = 512;

/// Whether all magnitudes are below smallLimit.
template <class S>
TVTYPES_LOOP bool allSmall(const Stored<S>* src, int count) {
    constexpr Unsigned<S> sign = Unsigned<S>(1) << (8 * sizeof(S) - 1);
    const Unsigned<S> limit = bitsOf(S(smallLimit));
    // The sum reaches the sign bit where a magnitude's bits reach those of the limit.
    Unsigned<S> sums = 0;
    for (int i = 0; i < count; ++i) {
        sums |= (bitsOf(src[i].value) & ~sign) + (sign - limit);
    }
    return (sums & sign) == 0;
}

template <class Policy, class S, class D>
TVTYPES_LOOP void convertElements(const Stored<S>* src, Stored<D>* dst, Count count) {
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        const S in = src[i].value;
        D out;
        Policy::conv(&in, &out);
        dst[i].value = out;
    }
}

template <class Policy, class S, class D>
TVTYPES_LOOP void convertSmallElements(const Stored<S>* src, Stored<D>* dst, int count) {
    TVTYPES_INDEPENDENT
    for (int i = 0; i < count; ++i) {
        const S in = src[i].value;
        D out;
        Policy::convSmall(&in, &out);
        dst[i].value = out;
    }
}

} // namespace
