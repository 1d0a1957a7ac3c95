/// \file
/// Array values of the host. A value is opaque, is made by one of the makers with one reference,
/// and lives until its last reference is given up.
#pragma once

#include <fnd/export.h>

#include <string>

struct oxArray_tag;

/// A value that is one real number. The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateDoubleScalar(double value);

/// A value that is one text; null counts as "". The caller owns the reference.
TV_PLATFORM_API oxArray_tag* oxCreateString(const char* text);

/// Whether the value is a number, or a text.
TV_PLATFORM_API bool oxIsDouble(const oxArray_tag* value);
TV_PLATFORM_API bool oxIsString(const oxArray_tag* value);

/// The number of a scalar; NaN if the value is not a number.
TV_PLATFORM_API double oxGetScalar(const oxArray_tag* value);

/// Takes one more reference to a value, and clears the mark that it is a temporary which its
/// holder may change in place. Gives the value itself. It is the same object as before, not a copy.
TV_PLATFORM_API const oxArray_tag* oxShareArray(const oxArray_tag* value);

/// Gives up one reference; the last one destroys the value. Null is accepted.
TV_PLATFORM_API void oxDestroyArray(oxArray_tag* value);

/// How many references there are.
TV_PLATFORM_API int oxGetReferenceCount(const oxArray_tag* value);

/// Whether the value is a temporary still: made, and never shared.
TV_PLATFORM_API bool oxIsTemporary(const oxArray_tag* value);

namespace oxcore {

/// The text of a value; "" if it is not a text.
TV_PLATFORM_API std::string get_string(const oxArray_tag* value);

} // namespace oxcore
