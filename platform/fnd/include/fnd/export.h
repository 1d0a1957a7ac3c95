/// \file
/// Visibility of the symbols of libtv_platform.so.
#pragma once

/// Marks an exported class or function. All other symbols are hidden.
#define TV_PLATFORM_API __attribute__((visibility("default")))
