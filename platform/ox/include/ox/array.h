/// \file
/// Reference-counted values of the host: numbers, texts and arrays of records. Memory of the host.
///
/// A value is created with one reference and destroyed with its last one. Functions that read a
/// value accept null, and return for it what they return for a value of another kind unless they
/// say otherwise. Reference counts are not atomic: a value may be used by one thread at a time,
/// reads included.
#pragma once

#include <fnd/export.h>
#include <fndi18n/codecvt.h>

#include <cstddef>
#include <string>
#include <vector>

struct oxArray_tag;

/// The host's classes of numeric values, with the host's own numbers.
enum oxClassID : int {
    oxNoClass = 0,      ///< none of the following
    oxBooleanClass = 3, ///< boolean
    oxDoubleClass = 6,  ///< double
    oxSingleClass = 7,  ///< float
    oxInt8Class = 8,    ///< 8-bit signed integer
    oxUint8Class = 9,   ///< 8-bit unsigned integer
    oxInt16Class = 10,  ///< 16-bit signed integer
    oxUint16Class = 11, ///< 16-bit unsigned integer
    oxInt32Class = 12,  ///< 32-bit signed integer
    oxUint32Class = 13  ///< 32-bit unsigned integer
};

/// Creates a number. The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateDoubleScalar(double value);

/// \name Creation of texts
/// @{

/// Creates a text, in UTF-8; null counts as "". The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateString(const char* text);
TV_PLATFORM_API oxArray_tag* oxCreateString(std::string text);
/// @}

/// Creates an array of `count` records with these fields, which are empty. The caller owns the
/// reference. Returns null if `count` times the number of fields exceeds the addressable memory.
TV_PLATFORM_API oxArray_tag* oxCreateRecords(std::size_t count,
                                             const std::vector<std::string>& fieldNames);

/// \name Kind of a value
/// @{

/// Returns whether the value is a number, a text, or an array of records.
TV_PLATFORM_API bool oxIsDouble(const oxArray_tag* value);
TV_PLATFORM_API bool oxIsString(const oxArray_tag* value);
TV_PLATFORM_API bool oxIsRecords(const oxArray_tag* value);
/// @}

/// Returns the value of a number; NaN for any other kind.
TV_PLATFORM_API double oxGetScalar(const oxArray_tag* value);

/// Returns the number of records; 1 for a number or text, 0 for null.
TV_PLATFORM_API std::size_t oxGetNumberOfElements(const oxArray_tag* value);

/// Returns the names of the fields in their order, valid as long as the value; none for any kind
/// but arrays of records.
TV_PLATFORM_API const std::vector<std::string>& oxGetFieldNames(const oxArray_tag* value);

/// \name Reading of fields
/// @{

/// Returns the field of a record, by name or by its position among the names, each counted from 0.
/// The first of several fields with a name. The array keeps its reference. Null if there is no such
/// record or field, or if the field is empty. By name, constant time for the field after the one
/// that was read last, else logarithmic in the number of fields. A null name is no field's.
TV_PLATFORM_API const oxArray_tag* oxGetField(const oxArray_tag* value, std::size_t index,
                                              const char* fieldName);
TV_PLATFORM_API const oxArray_tag* oxGetFieldAt(const oxArray_tag* value, std::size_t index,
                                                std::size_t fieldIndex);
/// @}

/// \name Setting of fields
/// @{

/// Sets a field and releases its previous value. The array takes over the caller's reference; null
/// empties the field. Returns false, with nothing changed and no reference taken, if there is no
/// such record or field. \pre The array is not contained in the new value.
TV_PLATFORM_API bool oxSetField(oxArray_tag* value, std::size_t index, const char* fieldName,
                                oxArray_tag* fieldValue);
TV_PLATFORM_API bool oxSetFieldAt(oxArray_tag* value, std::size_t index, std::size_t fieldIndex,
                                  oxArray_tag* fieldValue);
/// @}

/// Adds a reference to a value, clears its mark as a temporary, which its holder may change in
/// place, and returns the same value. Null is ignored.
TV_PLATFORM_API const oxArray_tag* oxShareArray(const oxArray_tag* value);

/// Releases a reference. The last one destroys the value and releases its fields, without
/// recursion and without allocating memory. Null is ignored.
TV_PLATFORM_API void oxDestroyArray(oxArray_tag* value);

/// Deleter of std::unique_ptr for references.
struct TOxArrayDeleter {
    /// Calls oxDestroyArray.
    void operator()(oxArray_tag* value) const noexcept { oxDestroyArray(value); }
};

/// Returns the number of references; 0 for null.
TV_PLATFORM_API int oxGetReferenceCount(const oxArray_tag* value);

/// Returns whether the value has never been shared; false for null.
TV_PLATFORM_API bool oxIsTemporary(const oxArray_tag* value);

/// Allocates zeroed memory of the host for `count` elements of `elementSize` bytes; returns null on
/// failure, also if the product overflows. Release it with oxFreeEx.
TV_PLATFORM_API void* oxCallocEx(std::size_t count, std::size_t elementSize);

/// Releases memory of oxCallocEx; null is ignored.
TV_PLATFORM_API void oxFreeEx(void* memory);

namespace oxcore {

/// \name Text of a value
/// @{

/// Returns a text in UTF-8, in the encoding of a converter, or in 16 bits; "" for any other kind.
TV_PLATFORM_API std::string get_string(const oxArray_tag* value);
TV_PLATFORM_API std::string get_string(const oxArray_tag* value,
                                       const fnd::i18n::codecvt_ustring_to_string& converter);
TV_PLATFORM_API std::basic_string<char16_t> get_ustring(const oxArray_tag* value);
/// @}

} // namespace oxcore
