/// \file
/// The number of types that every table has.
#pragma once

#include <tvtypes/export.h>

/// Returns the number of types that every table has in addition to "auto": the nine built-in and
/// the five predefined types, 14.
TVTYPES_API int DAGetNumTVDataTypes();
