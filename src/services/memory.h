/// \file
/// Raw memory and reference-counted values of the host.
#pragma once

#include <cstddef>

struct oxArray_tag;

namespace TVTypeSys {

/// Allocates `size` zeroed bytes. Returns null if memory runs out, and possibly for size 0.
void* allocateZeroed(std::size_t size);
/// Same, without initialisation.
void* allocate(std::size_t size);
/// Releases memory of the two functions above; null is accepted.
void releaseMemory(void* memory) noexcept;

/// Takes a reference to a host value and returns the value; null is accepted.
const oxArray_tag* share(const oxArray_tag* value);
/// Releases a reference to a host value; null is accepted.
void releaseValue(const oxArray_tag* value) noexcept;

} // namespace TVTypeSys
