/// \file
/// Variable files: UTF-8 JSON text, one object whose members are the variables.
///
/// A string or number is a value of that kind, an array of objects an array of records. The fields
/// of the records are the names of all the objects, in order of first appearance; a field that an
/// object lacks, or that is `null`, is empty. Fields have the same kinds of values as variables.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <string>

struct oxArray_tag;
struct oxdFile_tag;

/// Opens and reads a file. The caller closes it.
/// \param path path of the file
/// \param mode "r"; any other mode is an error
/// \return the file, or null, with the reason in oxdLastError(), if the file cannot be read or is
///         invalid. It must be a regular file of at most 16 MiB that is UTF-8 and one JSON object
///         with nothing after it, nested at most 32 levels, without a duplicate name in any object.
///         Values that are not allowed: `true` and `false`; `null` outside a record; an object that
///         is not an element of an array; an array element that is not an object; a number beyond
///         the range of double; more than 2^24 fields in total, counting empty ones.
TV_PLATFORM_API oxdFile_tag* oxdOpen(const std::basic_string<char16_t>& path, const char* mode);

/// Returns a variable; null if the file has none with this name. The caller owns a reference, which
/// remains valid when the file is closed. Each call returns the same value, which must not be
/// changed.
TV_PLATFORM_API oxArray_tag* oxdGetVariable(oxdFile_tag* file, const char* name);

/// Closes a file; null is ignored.
TV_PLATFORM_API void oxdClose(oxdFile_tag* file);

/// Deleter of std::unique_ptr for files.
struct TOxdFileDeleter {
    /// Calls oxdClose.
    void operator()(oxdFile_tag* file) const noexcept { oxdClose(file); }
};

/// Returns why the last oxdOpen of this thread returned null, such as "line 3, column 17: syntax
/// error";
/// "" if it succeeded. Lines and columns count from 1, columns in characters; the position is where
/// parsing stopped: at the error or at the end of an invalid value. There is no position if no text
/// was read. At most 1,024 bytes.
TV_PLATFORM_API std::string oxdLastError();
