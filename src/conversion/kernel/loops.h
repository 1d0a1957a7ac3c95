/// \file
/// What becomes of a vector. A policy says what one element does; the loops here expand it, choose
/// the faster form of it block by block, and spread scalars and complex values.
#pragma once

#include "conversion/kernel/kernel.h"
#include "conversion/kernel/loss.h"

namespace {

/// Whether a policy leaves all bits as they are.
template <class Policy, class S, class D>
inline constexpr bool isCopy = isSame<Policy, NoConv<S, D>> ||
                               (isSame<Policy, Cast_Conv<S, D>> && !isFloat<S> && !isFloat<D> &&
                                sizeof(S) == sizeof(D));

/// Converts as Policy says.
template <class Policy, class S, class D>
TVTYPES_LOOP void convert(const Stored<S>* src, Stored<D>* dst, Count count) {
    if constexpr (isFloat<S> && !isFloat<D>) {
        // Where a block has values without an integer, the next ones are likely to have some too.
        constexpr int blocksBeforeTryingAgain = 8;
        int withoutIntegers = 0;
        while (count > 0) {
            const int length = count < blockLength ? static_cast<int>(count) : blockLength;
            if (withoutIntegers == 0 && !convertByIntegers<Policy>(src, dst, length)) {
                withoutIntegers = blocksBeforeTryingAgain;
            }
            if (withoutIntegers > 0) {
                convertElements<Policy>(src, dst, static_cast<Count>(length));
                --withoutIntegers;
            }
            src += length;
            dst += length;
            count -= static_cast<Count>(length);
        }
    } else if constexpr (isCopy<Policy, S, D>) {
        __builtin_memmove(dst, src, count * sizeof(D));
    } else {
        convertElements<Policy>(src, dst, count);
    }
}

/// Converts and tells whether all was kept. Once something is lost there is no more to ask.
template <class Policy, class Diff, class S, class D>
TVTYPES_LOOP bool convertAndCheck(const Stored<S>* src, Stored<D>* dst, Count count) {
    while (count > 0) {
        const int length = count < blockLength ? static_cast<int>(count) : blockLength;
        if (!Diff::cast(src, dst, length)) {
            convert<Policy>(src, dst, count);
            return false;
        }
        src += length;
        dst += length;
        count -= static_cast<Count>(length);
    }
    return true;
}

/// The real parts of a complex source.
template <class T>
TVTYPES_LOOP void takeRealParts(const Stored<T>* src, Stored<T>* dst, Count count) {
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        dst[i].value = src[2 * i].value;
    }
}

/// A real source with imaginary parts of zero.
template <class T>
TVTYPES_LOOP void addImaginaryParts(const Stored<T>* src, Stored<T>* dst, Count count) {
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        dst[2 * i].value = src[i].value;
        dst[2 * i + 1].value = T(0);
    }
}

/// Whether all imaginary parts of a complex vector are zero.
template <class T>
TVTYPES_LOOP bool isRealValued(const Stored<T>* src, Count count) {
    unsigned int found = 0;
    for (Count i = 0; i < count; ++i) {
        found |= src[2 * i + 1].value != T(0) ? 1U : 0U;
    }
    return found == 0;
}

/// Repeats one element, of one or two parts.
template <class T>
TVTYPES_LOOP void repeat(const T* element, int parts, Stored<T>* dst, Count count) {
    if (parts == 1) {
        for (Count i = 0; i < count; ++i) {
            dst[i].value = element[0];
        }
        return;
    }
    for (Count i = 0; i < count; ++i) {
        dst[2 * i].value = element[0];
        dst[2 * i + 1].value = element[1];
    }
}

template <class S, class D, class Conv, class Diff>
class tvConvBuiltinDTypeTpl {
  public:
    static bool conv(const void* src, void* dst, Count srcCount, Count dstCount, bool srcIsComplex,
                     bool dstIsComplex, bool checkLoss, int /*srcId*/, int /*dstId*/,
                     fxpModeOverflow_tag /*overflow*/, fxpModeRounding_tag /*rounding*/) {
        const auto* from = static_cast<const Stored<S>*>(src);
        auto* to = static_cast<Stored<D>*>(dst);
        if (dstCount == 0) {
            return true;
        }
        if (srcCount <= 1) {
            return fromScalar(from, to, dstCount, srcIsComplex, dstIsComplex, checkLoss);
        }
        if (srcIsComplex == dstIsComplex) {
            return plain(from, to, srcIsComplex ? 2 * dstCount : dstCount, checkLoss);
        }
        return srcIsComplex ? toReal(from, to, dstCount, checkLoss)
                            : toComplex(from, to, dstCount, checkLoss);
    }

  private:
    TVTYPES_LOOP static bool plain(const Stored<S>* src, Stored<D>* dst, Count count,
                                   bool checkLoss) {
        if constexpr (!isSame<Diff, NoDiff>) {
            if (checkLoss) {
                return convertAndCheck<Conv, Diff>(src, dst, count);
            }
        }
        convert<Conv>(src, dst, count);
        return true;
    }

    static bool fromScalar(const Stored<S>* src, Stored<D>* dst, Count count, bool srcIsComplex,
                           bool dstIsComplex, bool checkLoss) {
        const Count parts = srcIsComplex && dstIsComplex ? 2 : 1;
        Stored<D> element[2] = {};
        bool kept = plain(src, element, parts, checkLoss);
        if (srcIsComplex && !dstIsComplex) {
            kept = dropImaginary(src, 1, checkLoss) && kept;
        }
        const D values[2] = {element[0].value, element[1].value};
        repeat(values, dstIsComplex ? 2 : 1, dst, count);
        return kept;
    }

    static bool toComplex(const Stored<S>* src, Stored<D>* dst, Count count, bool checkLoss) {
        if constexpr (isSame<Conv, NoConv<S, D>>) {
            addImaginaryParts(src, dst, count);
            return true;
        }
        bool kept = true;
        Stored<D> block[blockLength];
        while (count > 0) {
            const Count length = count < blockLength ? count : blockLength;
            kept = plain(src, block, length, checkLoss && kept) && kept;
            addImaginaryParts(block, dst, length);
            src += length;
            dst += 2 * length;
            count -= length;
        }
        return kept;
    }

    static bool toReal(const Stored<S>* src, Stored<D>* dst, Count count, bool checkLoss) {
        if constexpr (isSame<Conv, NoConv<S, D>>) {
            takeRealParts(src, dst, count);
            return true;
        }
        bool kept = true;
        Stored<S> block[blockLength];
        while (count > 0) {
            const Count length = count < blockLength ? count : blockLength;
            takeRealParts(src, block, length);
            kept = plain(block, dst, length, checkLoss && kept) && kept;
            kept = dropImaginary(src, length, checkLoss && kept) && kept;
            src += 2 * length;
            dst += length;
            count -= length;
        }
        return kept;
    }

    /// Whether dropping the imaginary parts loses nothing, where that is asked.
    static bool dropImaginary(const Stored<S>* src, Count count, bool checkLoss) {
        if constexpr (isSame<Diff, NoDiff>) {
            return true;
        } else {
            return !checkLoss || isRealValued(src, count);
        }
    }
};

template <class S>
class tvConvBuiltinDType2BoolTpl {
  public:
    static bool conv(const void* src, void* dst, Count srcCount, Count dstCount, bool srcIsComplex,
                     bool /*dstIsComplex*/, bool checkLoss, int /*srcId*/, int /*dstId*/,
                     fxpModeOverflow_tag /*overflow*/, fxpModeRounding_tag /*rounding*/) {
        const auto* from = static_cast<const Stored<S>*>(src);
        auto* to = static_cast<Stored<uint8_T>*>(dst);
        if (srcCount == 1) {
            Stored<uint8_T> element;
            const bool kept =
                convertVector(from, &element, dstCount < 1 ? 0 : 1, srcIsComplex, checkLoss);
            repeat(&element.value, 1, to, dstCount);
            return kept;
        }
        return convertVector(from, to, dstCount, srcIsComplex, checkLoss);
    }

  private:
    static bool convertVector(const Stored<S>* src, Stored<uint8_T>* dst, Count count,
                              bool isComplex, bool checkLoss) {
        bool kept = true;
        while (count > 0) {
            const int length = count < blockLength ? static_cast<int>(count) : blockLength;
            isComplex ? pairsToBool(src, dst, length) : partsToBool(src, dst, length);
            if (checkLoss && kept) {
                kept = isComplex ? pairsKept(src, length) : partsKept(src, length);
            }
            src += isComplex ? 2 * length : length;
            dst += length;
            count -= static_cast<Count>(length);
        }
        return kept;
    }
    TVTYPES_LOOP static void partsToBool(const Stored<S>* src, Stored<uint8_T>* dst, int count) {
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            dst[i].value = src[i].value != S(0) ? 1 : 0;
        }
    }
    TVTYPES_LOOP static void pairsToBool(const Stored<S>* src, Stored<uint8_T>* dst, int count) {
        TVTYPES_INDEPENDENT
        for (int i = 0; i < count; ++i) {
            const unsigned int real = src[2 * i].value != S(0) ? 1 : 0;
            const unsigned int imaginary = src[2 * i + 1].value != S(0) ? 1 : 0;
            dst[i].value = static_cast<uint8_T>(real | imaginary);
        }
    }
    TVTYPES_LOOP static bool partsKept(const Stored<S>* src, int count) {
        if constexpr (isFloat<S>) {
            unsigned int lost = 0;
            for (int i = 0; i < count; ++i) {
                const S x = src[i].value;
                lost |= (x != S(0) ? 1U : 0U) & (x != S(1) ? 1U : 0U);
            }
            return lost == 0;
        } else {
            Unsigned<S> all = 0;
            for (int i = 0; i < count; ++i) {
                all = static_cast<Unsigned<S>>(all | static_cast<Unsigned<S>>(src[i].value));
            }
            return all <= 1;
        }
    }
    // The first part must be what it became: 1 if either part is not zero, else 0.
    TVTYPES_LOOP static bool pairsKept(const Stored<S>* src, int count) {
        unsigned int lost = 0;
        for (int i = 0; i < count; ++i) {
            const S real = src[2 * i].value;
            lost |= (real != S(0) ? 1U : 0U) & (real != S(1) ? 1U : 0U);
            lost |= src[2 * i + 1].value != S(0) ? 1U : 0U;
        }
        return lost == 0;
    }
};

} // namespace
