#pragma once

/// Marks what libtv_platform.so offers to others. All else is hidden.
#define TV_PLATFORM_API __attribute__((visibility("default")))
