/// \file
/// The library's version and build date.
#pragma once

#include <tvtypes/export.h>

/// The library's version: numbers separated by points.
extern TVTYPES_API const char libtv_types_version[];

/// The date on which the library was built: the month's three letters, the day and the year.
extern TVTYPES_API const char libtv_types_build_date[];
