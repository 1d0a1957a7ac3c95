/// \file
/// Conversion to boolean: 1 if a part is not zero, otherwise 0. One byte an element, complex or
/// not.
#pragma once

#include "conversion/kernel/vectors.h"

namespace {

/// The loops over a block of sources of type S, real ("parts") or complex ("pairs").
template <class S>
struct BooleanElements {
    TVTYPES_LOOP static void convertParts(const void* source, void* destination, int count) {
        const int length = boundedLength(count);
        const auto* src = elements<S>(source);
        auto* dst = elements<uint8_T>(destination);
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            dst[i].value = src[i].value != S(0) ? 1 : 0;
        }
    }
    TVTYPES_LOOP static void convertPairs(const void* source, void* destination, int count) {
        const int length = boundedLength(count);
        const auto* src = elements<S>(source);
        auto* dst = elements<uint8_T>(destination);
        TVTYPES_INDEPENDENT
        for (int i = 0; i < length; ++i) {
            const unsigned int real = src[2 * i].value != S(0) ? 1 : 0;
            const unsigned int imaginary = src[2 * i + 1].value != S(0) ? 1 : 0;
            dst[i].value = static_cast<uint8_T>(real | imaginary);
        }
    }
    /// Whether every element is 0 or 1.
    TVTYPES_LOOP static bool arePartsKept(const void* source, int count) {
        const int length = boundedLength(count);
        const auto* src = elements<S>(source);
        if constexpr (isFloat<S>) {
            unsigned int lost = 0;
            for (int i = 0; i < length; ++i) {
                const S x = src[i].value;
                lost |= (x != S(0) ? 1U : 0U) & (x != S(1) ? 1U : 0U);
            }
            return lost == 0;
        } else {
            S all = 0;
            for (int i = 0; i < length; ++i) {
                all = static_cast<S>(all | src[i].value);
            }
            return all <= 1;
        }
    }
    /// Whether every real part is 0 or 1 and every imaginary part 0.
    TVTYPES_LOOP static bool arePairsKept(const void* source, int count) {
        const int length = boundedLength(count);
        const auto* src = elements<S>(source);
        unsigned int lost = 0;
        for (int i = 0; i < length; ++i) {
            const S real = src[2 * i].value;
            lost |= (real != S(0) ? 1U : 0U) & (real != S(1) ? 1U : 0U);
            lost |= src[2 * i + 1].value != S(0) ? 1U : 0U;
        }
        return lost == 0;
    }
};

/// The loops for real or for complex sources.
struct BooleanLoops {
    Count srcSize; ///< bytes of a source element, with both parts if complex
    void (*convert)(const void* source, void* destination, int count);
    bool (*areKept)(const void* source, int count);
};

/// By whether the source is complex. Signed integers share the loops of unsigned ones.
template <class S>
struct BooleanLoopsFrom {
    static constexpr BooleanLoops loops[] = {
        {sizeof(S), BooleanElements<S>::convertParts, BooleanElements<S>::arePartsKept},
        {2 * sizeof(S), BooleanElements<S>::convertPairs, BooleanElements<S>::arePairsKept}};
};

inline bool convertToBoolean(const BooleanLoops& loops, Cursor at, Count count, bool checkLoss) {
    bool kept = true;
    while (count > 0) {
        const int length = nextBlock(count);
        loops.convert(at.src, at.dst, length);
        kept = (!checkLoss || !kept || loops.areKept(at.src, length)) && kept;
        const Count converted = static_cast<Count>(length);
        at.advance(converted, loops.srcSize, 1);
        count -= converted;
    }
    return kept;
}

/// As convertVector. The source is a scalar only if `srcCount` is 1, not if it is 0.
TVTYPES_LOOP bool convertVectorToBoolean(const void* src, void* dst, Count srcCount, Count dstCount,
                                         bool srcIsComplex, bool /*dstIsComplex*/, bool checkLoss,
                                         const BooleanLoops* loopsBySource) {
    const DefaultEnvironment environment;
    const BooleanLoops& loops = loopsBySource[srcIsComplex ? 1 : 0];
    const Cursor at = {static_cast<const unsigned char*>(src), static_cast<unsigned char*>(dst)};
    if (srcCount != 1) {
        return src != dst
                   ? convertToBoolean(loops, at, dstCount, checkLoss)
                   : convertInPlace(at, loops.srcSize, 1, dstCount, checkLoss,
                                    [&](Cursor block, Count count, bool checksBlock) {
                                        return convertToBoolean(loops, block, count, checksBlock);
                                    });
    }
    unsigned char element = 0;
    const Count converted = dstCount < 1 ? 0 : 1;
    const bool kept = convertToBoolean(loops, {at.src, &element}, converted, checkLoss);
    replicate<uint8_T>(&element, 1, dst, dstCount);
    return kept;
}

} // namespace
