/// \file
/// Raw memory and shared values of the host.
#pragma once

#include <cstddef>

struct oxArray_tag;

namespace TVTypeSys {

/// Zeroed or uninitialised memory of `size` bytes; null if there is none. Size 0 may give null.
void* allocateZeroed(std::size_t size);
void* allocate(std::size_t size);
void releaseMemory(void* memory) noexcept;

/// Takes or gives up a reference to a host value; null is accepted.
const oxArray_tag* share(const oxArray_tag* value);
void releaseValue(const oxArray_tag* value) noexcept;

} // namespace TVTypeSys
