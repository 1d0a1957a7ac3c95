#include "services/memory.h"

#include <fndut/alloc.h>
#include <ox/array.h>

namespace TVTypeSys {

void* allocateZeroed(std::size_t size) { return utCalloc(size, 1); }

void* allocate(std::size_t size) { return utMalloc(size); }

void releaseMemory(void* memory) noexcept { utFree(memory); }

const oxArray_tag* share(const oxArray_tag* value) {
    return value == nullptr ? nullptr : oxShareArray(value);
}

// The parameter of the host is not const because the reference count changes; the contents do not.
void releaseValue(const oxArray_tag* value) noexcept {
    oxDestroyArray(const_cast<oxArray_tag*>(value));
}

} // namespace TVTypeSys
