/// \file
/// Version and build date of the library.
#pragma once

#include <tvtypes/export.h>

/// Version of the library: numbers separated by points.
extern TVTYPES_API const char libtv_types_version[];

/// UTC date of the build: abbreviated month, day and year, such as "Jan 31 2026".
extern TVTYPES_API const char libtv_types_build_date[];
