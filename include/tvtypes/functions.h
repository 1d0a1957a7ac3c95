/// \file
/// Exported plain functions and texts that belong to no class.
#pragma once

#include <tvtypes/export.h>

/// The library's version, as numbers with points between them.
extern TVTYPES_API const char libtv_types_version[];

/// When the library was built: the month's three letters, the day and the year.
extern TVTYPES_API const char libtv_types_build_date[];

/// How many types every table holds beside "auto": the nine built-in and the five predefined, 14.
TVTYPES_API int DAGetNumTVDataTypes();
