/// \file
/// Files of host values: UTF-8 JSON text, one object whose members are the variables.
///
/// A text or a number is a value of that kind, and an array of objects is an array of records. The
/// names of its fields are those of all its objects in the order in which they first appear; where
/// an object lacks one, or has `null` there, the field holds nothing. Fields hold what variables
/// hold.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <string>

struct oxArray_tag;
struct oxdFile_tag;

/// Opens a file for reading and reads all of it; `mode` is "r". The caller closes it.
///
/// Null, with the reason in oxdLastError(), if the mode is another or the file is none that can be
/// read. It must be a regular file of 16 MiB at most, and well-formed: UTF-8, one JSON object with
/// nothing behind it, nested no deeper than 32 levels, in which no object has a name twice. It must
/// hold nothing that is no value: no `true` or `false`, no `null` but in a record, no object
/// but as an element of an array, no other elements, no number beyond the doubles, and no more
/// than 2^24 fields, counting those that hold nothing.
TV_PLATFORM_API oxdFile_tag* oxdOpen(const std::basic_string<char16_t>& path, const char* mode);

/// A variable; null if the file has none of this name. The caller owns a reference, which outlives
/// the file. Each call gives the same value, so it is to be read, not changed.
TV_PLATFORM_API oxArray_tag* oxdGetVariable(oxdFile_tag* file, const char* name);

/// Closes a file; null is accepted.
TV_PLATFORM_API void oxdClose(oxdFile_tag* file);

/// Closes a file held by a std::unique_ptr.
struct TOxdFileDeleter {
    void operator()(oxdFile_tag* file) const noexcept { oxdClose(file); }
};

/// Why this thread's last call of oxdOpen gave null, as in "line 3, column 17: syntax error"; ""
/// if it did not. A column counts characters and is where reading stopped, at the fault or at the
/// end of the faulty value; both count from 1. There is no line where no text was read.
TV_PLATFORM_API std::string oxdLastError();
