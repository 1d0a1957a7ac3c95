/// \file
/// Symbol visibility in libtv_types.so.
#pragma once

/// Exports a class, function or variable. All other symbols of the library are hidden.
#define TVTYPES_API __attribute__((visibility("default")))

/// Hides a member of an exported class.
#define TVTYPES_LOCAL __attribute__((visibility("hidden")))
