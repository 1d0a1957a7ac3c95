/// \file
/// Array values of the host, and memory and classes of the host.
///
/// A value is opaque, is made by one of the makers with one reference, and lives until its last
/// reference is given up. Readers accept null, and then answer as for a value of another kind.
#pragma once

#include <fnd/export.h>
#include <fndi18n/codecvt.h>

#include <cstddef>
#include <string>
#include <vector>

struct oxArray_tag;

/// The host's classes of numeric values, under the host's own numbers.
enum oxClassID : int {
    oxNoClass = 0,
    oxBooleanClass = 3,
    oxDoubleClass = 6,
    oxSingleClass = 7,
    oxInt8Class = 8,
    oxUint8Class = 9,
    oxInt16Class = 10,
    oxUint16Class = 11,
    oxInt32Class = 12,
    oxUint32Class = 13
};

/// A value that is one real number. The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateDoubleScalar(double value);

/// A value that is one text in UTF-8; null counts as "". The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateString(const char* text);
TV_PLATFORM_API oxArray_tag* oxCreateString(std::string text);

/// A value that is an array of `count` records, each with these fields, which hold nothing yet.
/// The caller owns the reference. Null if there cannot be so many.
TV_PLATFORM_API oxArray_tag* oxCreateRecords(std::size_t count,
                                             const std::vector<std::string>& fieldNames);

/// Whether the value is a number, a text, or an array of records.
TV_PLATFORM_API bool oxIsDouble(const oxArray_tag* value);
TV_PLATFORM_API bool oxIsString(const oxArray_tag* value);
TV_PLATFORM_API bool oxIsRecords(const oxArray_tag* value);

/// The number of a scalar; NaN if the value is not a number.
TV_PLATFORM_API double oxGetScalar(const oxArray_tag* value);

/// How many records there are; a number or a text counts as one element, null as none.
TV_PLATFORM_API std::size_t oxGetNumberOfElements(const oxArray_tag* value);

/// The names of the fields in their order, valid as long as the value; none if the value is not an
/// array of records.
TV_PLATFORM_API const std::vector<std::string>& oxGetFieldNames(const oxArray_tag* value);

/// The field of one record, by name or by its place among the names, both counted from 0. The
/// array keeps the reference. Null if there is no such record or field, or if the field holds
/// nothing.
TV_PLATFORM_API const oxArray_tag* oxGetField(const oxArray_tag* value, std::size_t index,
                                              const char* fieldName);
TV_PLATFORM_API const oxArray_tag* oxGetFieldAt(const oxArray_tag* value, std::size_t index,
                                                std::size_t fieldIndex);

/// Puts a value into a field and gives up the one it held. The array takes over the caller's
/// reference; null empties the field. An array must not come to lie in itself. False, with nothing
/// changed and nothing taken over, if there is no such record or field.
TV_PLATFORM_API bool oxSetField(oxArray_tag* value, std::size_t index, const char* fieldName,
                                oxArray_tag* fieldValue);
TV_PLATFORM_API bool oxSetFieldAt(oxArray_tag* value, std::size_t index, std::size_t fieldIndex,
                                  oxArray_tag* fieldValue);

/// Takes one more reference to a value, and clears the mark that it is a temporary which its
/// holder may change in place. Gives the value itself. It is the same object as before, not a copy.
TV_PLATFORM_API const oxArray_tag* oxShareArray(const oxArray_tag* value);

/// Gives up one reference; the last one destroys the value, and gives up what its fields hold.
/// Null is accepted.
TV_PLATFORM_API void oxDestroyArray(oxArray_tag* value);

/// Gives up a reference held by a std::unique_ptr.
struct TOxArrayDeleter {
    void operator()(oxArray_tag* value) const noexcept { oxDestroyArray(value); }
};

/// How many references there are.
TV_PLATFORM_API int oxGetReferenceCount(const oxArray_tag* value);

/// Whether the value is a temporary still: made, and never shared.
TV_PLATFORM_API bool oxIsTemporary(const oxArray_tag* value);

/// Zeroed memory of the host for `count` elements of `elementSize` bytes; null if there is none,
/// and where the product is more than any memory. Released by oxFreeEx.
TV_PLATFORM_API void* oxCallocEx(std::size_t count, std::size_t elementSize);

/// Releases what oxCallocEx gave; null is accepted.
TV_PLATFORM_API void oxFreeEx(void* memory);

namespace oxcore {

/// The text of a value, as it stands, through a converter, or in 16 bits; "" if it is not a text.
TV_PLATFORM_API std::string get_string(const oxArray_tag* value);
TV_PLATFORM_API std::string get_string(const oxArray_tag* value,
                                       const fnd::i18n::codecvt_ustring_to_string& converter);
TV_PLATFORM_API std::basic_string<char16_t> get_ustring(const oxArray_tag* value);

} // namespace oxcore
