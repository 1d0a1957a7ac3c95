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

/// Converts as Policy says.
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

/// The same by way of integers, in fewer steps. If not all values have one, the result is false,
/// and what was written is not the result.
template <class Policy, class S, class D>
TVTYPES_LOOP bool convertByIntegers(const Stored<S>* src, Stored<D>* dst, int count) {
    int32_T least = 0;
    TVTYPES_INDEPENDENT
    for (int i = 0; i < count; ++i) {
        const int32_T integer = Policy::integer(src[i].value);
        least = integer < least ? integer : least;
        dst[i].value = Policy::narrowed(integer);
    }
    return least != noInteger;
}

} // namespace
