/// \file
/// Loops over real elements. Each expands one conversion of an element without branches, so that it
/// vectorises. The vectors are untyped, so that all loops of a kind have one function type.
#pragma once

#include "conversion/kernel/elementwise.h"

namespace {

/// Converts one element.
template <class Conversion>
void convertElement(const void* source, void* destination) {
    const Conversion conversion{};
    const auto x = elements<typename Conversion::Source>(source)->value;
    elements<typename Conversion::Destination>(destination)->value = conversion.convert(x);
}

/// Converts elements of any value.
template <class Conversion>
TVTYPES_LOOP void convertElements(const void* source, void* destination, Count count) {
    const auto* src = elements<typename Conversion::Source>(source);
    auto* dst = elements<typename Conversion::Destination>(destination);
    const Conversion conversion{};
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        dst[i].value = conversion.convert(src[i].value);
    }
}

/// Converts elements in fewer steps. Returns false, with the destination unspecified, if some have
/// values that these do not convert.
template <class Conversion>
TVTYPES_LOOP bool convertElementsQuickly(const void* source, void* destination, int count) {
    const auto* src = elements<typename Conversion::Source>(source);
    auto* dst = elements<typename Conversion::Destination>(destination);
    const Conversion conversion{};
    typename Conversion::Evidence evidence = 0;
    TVTYPES_INDEPENDENT
    for (int i = 0; i < count; ++i) {
        dst[i].value = conversion.convertQuickly(src[i].value, evidence);
    }
    return Conversion::isValid(evidence);
}

/// Returns whether all imaginary parts of a complex vector are zero.
template <class T>
TVTYPES_LOOP bool isRealValued(const void* source, Count count) {
    const auto* src = elements<T>(source);
    unsigned int found = 0;
    for (Count i = 0; i < count; ++i) {
        found |= src[2 * i + 1].value != T(0) ? 1U : 0U;
    }
    return found == 0;
}

/// Copies the real parts of a complex source.
template <class T>
TVTYPES_LOOP void takeRealParts(const void* source, void* destination, Count count) {
    const auto* src = elements<T>(source);
    auto* dst = elements<T>(destination);
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        dst[i].value = src[2 * i].value;
    }
}

/// Copies a real source and adds imaginary parts of zero.
template <class T>
TVTYPES_LOOP void addImaginaryParts(const void* source, void* destination, Count count) {
    const auto* src = elements<T>(source);
    auto* dst = elements<T>(destination);
    TVTYPES_INDEPENDENT
    for (Count i = 0; i < count; ++i) {
        dst[2 * i].value = src[i].value;
        dst[2 * i + 1].value = T(0);
    }
}

/// Replicates one element, of one or two parts.
template <class T>
TVTYPES_LOOP void replicate(const void* element, int parts, void* destination, Count count) {
    auto* dst = elements<T>(destination);
    const T real = elements<T>(element)[0].value;
    if (parts == 1) {
        for (Count i = 0; i < count; ++i) {
            dst[i].value = real;
        }
        return;
    }
    const T imaginary = elements<T>(element)[1].value;
    for (Count i = 0; i < count; ++i) {
        dst[2 * i].value = real;
        dst[2 * i + 1].value = imaginary;
    }
}

} // namespace
