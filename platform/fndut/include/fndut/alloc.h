/// \file
/// Raw memory and C strings of the host.
#pragma once

#include <fnd/export.h>

#include <cstddef>

/// Allocates zeroed memory for `count` elements of `size` bytes; returns null on failure. Release
/// it with utFree.
TV_PLATFORM_API void* utCalloc(std::size_t count, std::size_t size);

/// Allocates `size` bytes, not initialised; returns null on failure. Release them with utFree.
TV_PLATFORM_API void* utMalloc(std::size_t size);

/// Releases memory of utCalloc or utMalloc; null is ignored.
TV_PLATFORM_API void utFree(void* pointer);

/// Returns the length of a text in bytes; 0 for null.
TV_PLATFORM_API std::size_t utStrlen(const char* text);
