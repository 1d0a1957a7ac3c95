/// \file
/// Version and build date of the library, and the instructions that it uses.
#pragma once

#include <tvtypes/export.h>

/// Version of the library: numbers separated by points.
extern TVTYPES_API const char libtv_types_version[];

/// UTC date of the build: abbreviated month, day and year, such as "Jan 31 2026".
extern TVTYPES_API const char libtv_types_build_date[];

/// Returns the instruction set that the conversions of this process use, the highest that both the
/// processor and the operating system support: "x86-64", "x86-64-v2", "x86-64-v3" or "x86-64-v4";
/// "portable" on other architectures. The text is never freed.
TVTYPES_API const char* getInstructionSetName() noexcept;
