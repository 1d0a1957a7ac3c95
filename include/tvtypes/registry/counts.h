/// \file
/// Number of types in every table.
#pragma once

#include <tvtypes/export.h>

/// \addtogroup registry
/// @{

/// Returns 14, the number of types in a new table without "auto": nine built-in and five
/// predefined.
TVTYPES_API int DAGetNumTVDataTypes();

/// @}
