/// \file
/// Conversion of vectors by blocks of elements: loss, complex vectors and scalar sources. Not
/// templates: a conversion passes its element loops as a record of function pointers, each called
/// once for a block or a vector.
#pragma once

#include "conversion/kernel/element_loops.h"
#include "floating_point_environment.h"

namespace {

inline constexpr int largestElement = 8; // bytes

/// Bytes of a buffer for rearranged elements.
inline constexpr Count blockSize = blockLength * largestElement;

/// The loops that depend on one element type only.
struct ElementType {
    Count size; ///< bytes
    bool (*isRealValued)(const void* source, Count count);
    void (*takeRealParts)(const void* source, void* destination, Count count);
    void (*addImaginaryParts)(const void* source, void* destination, Count count);
    void (*replicate)(const void* element, int parts, void* destination, Count count);
};

template <class T>
inline constexpr ElementType elementType = {sizeof(T), isRealValued<T>, takeRealParts<Bits<T>>,
                                            addImaginaryParts<Bits<T>>, replicate<Bits<T>>};

/// The loops of one conversion.
struct ConversionLoops {
    const ElementType* src;
    const ElementType* dst;
    /// Converts one element, in the default environment. Null, as the next two, for a copy.
    void (*convertOne)(const void* source, void* destination);
    /// Converts elements of any value, with arithmetic that rounds in `direction`.
    void (*convert)(const void* source, void* destination, Count count);
    /// Faster form of `convert` for blocks: false, with the destination unspecified, if it does not
    /// apply to all elements. Null if there is none.
    bool (*convertQuickly)(const void* source, void* destination, int count);
    RoundingDirection direction;
    /// Whether convertOne has floating-point arithmetic, which depends on the environment.
    bool hasArithmetic;
    /// Casts elements up to the first block with one that is not kept, and returns their number;
    /// beyond them the destination is unspecified. Null if the destination holds every value of the
    /// source.
    Count (*castExactly)(const void* source, void* destination, Count count);
};

/// A source and a destination, advanced together.
struct Cursor {
    const unsigned char* src;
    unsigned char* dst;

    void advance(Count elements, Count srcSize, Count dstSize) {
        src += elements * srcSize;
        dst += elements * dstSize;
    }
};

/// Converts blocks of elements by the faster form where that applies.
TVTYPES_LOOP void convertByBlocks(const ConversionLoops& loops, Cursor at, Count count) {
    // After a block to which it does not apply, it is likely not to apply to the next ones either.
    constexpr int blocksBeforeRetry = 8;
    int blocksToSkip = 0;
    const Count srcSize = loops.src->size;
    const Count dstSize = loops.dst->size;
    while (count > 0) {
        const int length = nextBlock(count);
        if (blocksToSkip == 0 && !loops.convertQuickly(at.src, at.dst, length)) {
            blocksToSkip = blocksBeforeRetry;
        }
        const Count converted = static_cast<Count>(length);
        if (blocksToSkip > 0) {
            loops.convert(at.src, at.dst, converted);
            --blocksToSkip;
        }
        at.advance(converted, srcSize, dstSize);
        count -= converted;
    }
}

/// Converts elements without a check.
inline void convertUnchecked(const ConversionLoops& loops, Cursor at, Count count) {
    if (loops.convertQuickly != nullptr) {
        convertByBlocks(loops, at, count);
    } else if (loops.convert != nullptr) {
        loops.convert(at.src, at.dst, count);
    } else {
        __builtin_memmove(at.dst, at.src, count * loops.dst->size);
    }
}

/// Converts elements; returns whether all of them were kept. The first loss ends the check.
TVTYPES_LOOP bool convertChecked(const ConversionLoops& loops, Cursor at, Count count) {
    const Count kept = loops.castExactly(at.src, at.dst, count);
    if (kept == count) {
        return true;
    }
    at.advance(kept, loops.src->size, loops.dst->size);
    convertUnchecked(loops, at, count - kept);
    return false;
}

/// Converts elements; with `checkLoss`, returns whether all of them were kept.
inline bool convertParts(const ConversionLoops& loops, Cursor at, Count count, bool checkLoss) {
    if (checkLoss) {
        return convertChecked(loops, at, count);
    }
    convertUnchecked(loops, at, count);
    return true;
}

/// Converts one element without a check.
inline void convertPart(const ConversionLoops& loops, Cursor at) {
    if (loops.convertOne != nullptr) {
        loops.convertOne(at.src, at.dst);
    } else {
        __builtin_memcpy(at.dst, at.src, loops.dst->size);
    }
}

/// Converts an element and replicates it.
TVTYPES_LOOP bool convertScalar(const ConversionLoops& loops, Cursor at, Count count,
                                bool srcIsComplex, bool dstIsComplex, bool checkLoss) {
    unsigned char element[2 * largestElement] = {};
    const Count parts = srcIsComplex && dstIsComplex ? 2 : 1;
    bool kept = !checkLoss || loops.castExactly(at.src, element, parts) == parts;
    if (!checkLoss || !kept) {
        convertPart(loops, {at.src, element});
        if (parts == 2) {
            convertPart(loops, {at.src + loops.src->size, element + loops.dst->size});
        }
    }
    if (checkLoss && srcIsComplex && !dstIsComplex) {
        kept = loops.src->isRealValued(at.src, 1) && kept;
    }
    loops.dst->replicate(element, dstIsComplex ? 2 : 1, at.dst, count);
    return kept;
}

TVTYPES_LOOP bool convertToComplex(const ConversionLoops& loops, Cursor at, Count count,
                                   bool checkLoss) {
    if (loops.convert == nullptr && !checkLoss) {
        loops.dst->addImaginaryParts(at.src, at.dst, count);
        return true;
    }
    bool kept = true;
    alignas(64) unsigned char block[blockSize];
    const Count capacity = blockSize / loops.dst->size;
    while (count > 0) {
        const Count length = count < capacity ? count : capacity;
        kept = convertParts(loops, {at.src, block}, length, checkLoss && kept) && kept;
        loops.dst->addImaginaryParts(block, at.dst, length);
        at.advance(length, loops.src->size, 2 * loops.dst->size);
        count -= length;
    }
    return kept;
}

TVTYPES_LOOP bool convertToReal(const ConversionLoops& loops, Cursor at, Count count,
                                bool checkLoss) {
    if (loops.convert == nullptr && !checkLoss) {
        loops.src->takeRealParts(at.src, at.dst, count);
        return true;
    }
    bool kept = true;
    alignas(64) unsigned char block[blockSize];
    const Count capacity = blockSize / loops.src->size;
    while (count > 0) {
        const Count length = count < capacity ? count : capacity;
        loops.src->takeRealParts(at.src, block, length);
        kept = convertParts(loops, {block, at.dst}, length, checkLoss && kept) && kept;
        kept = (!checkLoss || !kept || loops.src->isRealValued(at.src, length)) && kept;
        at.advance(length, 2 * loops.src->size, loops.dst->size);
        count -= length;
    }
    return kept;
}

/// Converts a vector that its destination does not overlap.
inline bool convertApart(const ConversionLoops& loops, Cursor at, Count count, bool srcIsComplex,
                         bool dstIsComplex, bool checkLoss) {
    if (srcIsComplex == dstIsComplex) {
        return convertParts(loops, at, srcIsComplex ? 2 * count : count, checkLoss);
    }
    return srcIsComplex ? convertToReal(loops, at, count, checkLoss)
                        : convertToComplex(loops, at, count, checkLoss);
}

/// Converts a vector whose destination begins where it does, by calling
/// `convert(at, count, checkLoss)` with copies of its blocks. A second loop over a block, which
/// the check and the faster loops need, would otherwise read what the first has written. The sizes
/// are those of elements with all their parts. \pre A destination element is no larger than a
/// source element: a block overwrites nothing beyond its own source.
template <class Convert>
bool convertInPlace(Cursor at, Count srcSize, Count dstSize, Count count, bool checkLoss,
                    const Convert& convert) {
    alignas(64) unsigned char block[2 * blockSize];
    bool kept = true;
    while (count > 0) {
        const Count length = static_cast<Count>(nextBlock(count));
        __builtin_memcpy(block, at.src, length * srcSize);
        kept = convert(Cursor{block, at.dst}, length, checkLoss && kept) && kept;
        at.advance(length, srcSize, dstSize);
        count -= length;
    }
    return kept;
}

/// The conversions except those to boolean. In the order of the conversion functions' arguments, so
/// that these pass theirs on as they are.
TVTYPES_LOOP bool convertVector(const void* src, void* dst, Count srcCount, Count dstCount,
                                bool srcIsComplex, bool dstIsComplex, bool checkLoss,
                                const ConversionLoops& loops) {
    const Cursor at = {static_cast<const unsigned char*>(src), static_cast<unsigned char*>(dst)};
    const bool checks = checkLoss && loops.castExactly != nullptr;
    if (dstCount == 0) {
        return true;
    }
    if (srcCount <= 1) {
        const bool isOne = dstCount == 1 && !dstIsComplex && !checks;
        // For one element, reading the environment takes longer than its conversion.
        if (isOne && !loops.hasArithmetic) {
            convertPart(loops, at);
            return true;
        }
        const DefaultEnvironment environment;
        if (isOne) {
            convertPart(loops, at);
            return true;
        }
        return convertScalar(loops, at, dstCount, srcIsComplex, dstIsComplex, checks);
    }
    const DefaultEnvironment environment(loops.direction);
    if (src == dst) {
        return convertInPlace(
            at, loops.src->size * (srcIsComplex ? 2 : 1), loops.dst->size * (dstIsComplex ? 2 : 1),
            dstCount, checks, [&](Cursor block, Count count, bool checksBlock) {
                return convertApart(loops, block, count, srcIsComplex, dstIsComplex, checksBlock);
            });
    }
    return convertApart(loops, at, dstCount, srcIsComplex, dstIsComplex, checks);
}

} // namespace
