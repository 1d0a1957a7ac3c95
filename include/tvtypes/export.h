/// \file
/// The visibility of what libtv_types.so offers.
#pragma once

/// Marks an exported class, function or datum. All else in the library is hidden.
#define TVTYPES_API __attribute__((visibility("default")))

/// Marks a part of an exported class that is for the library alone.
#define TVTYPES_LOCAL __attribute__((visibility("hidden")))
