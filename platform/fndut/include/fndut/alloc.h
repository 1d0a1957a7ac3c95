/// \file
/// Raw memory and raw text of the host.
#pragma once

#include <fnd/export.h>

#include <cstddef>

/// Zeroed memory for `count` elements of `size` bytes; null if there is none. Released by utFree.
TV_PLATFORM_API void* utCalloc(std::size_t count, std::size_t size);

/// Memory of `size` bytes; null if there is none. Released by utFree.
TV_PLATFORM_API void* utMalloc(std::size_t size);

/// Releases what utCalloc or utMalloc gave; null is accepted.
TV_PLATFORM_API void utFree(void* pointer);

/// The length of a text; 0 for null.
TV_PLATFORM_API std::size_t utStrlen(const char* text);
