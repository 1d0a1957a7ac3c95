#include "support/failing_allocations.h"

#include <fndut/alloc.h>

#include <cstdlib>

namespace {

// Allocations of this thread until one fails; negative: none will.
thread_local int remaining = -1;
thread_local Failures mode = Failures::Once;
thread_local bool hasFailed = false;

bool fails() {
    if (remaining > 0) {
        --remaining;
        return false;
    }
    if (remaining < 0) {
        return false;
    }
    hasFailed = true;
    if (mode == Failures::Once) {
        remaining = -1;
    }
    return true;
}

void* allocate(std::size_t size) { return fails() ? nullptr : std::malloc(size == 0 ? 1 : size); }

void* allocateAligned(std::size_t size, std::align_val_t alignment) {
    const auto unit = static_cast<std::size_t>(alignment);
    return fails() ? nullptr : std::aligned_alloc(unit, (size + unit) / unit * unit);
}

void* orThrow(void* memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

FailingAllocations::FailingAllocations(int first, Failures failures) {
    mode = failures;
    hasFailed = false;
    remaining = first;
}

FailingAllocations::~FailingAllocations() { remaining = -1; }

bool FailingAllocations::triggered() const { return hasFailed; }

// The functions that the libraries call: the program's definitions precede theirs.
void* utMalloc(std::size_t size) { return allocate(size); }
void* utCalloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : std::calloc(count, size);
}

void* operator new(std::size_t size) { return orThrow(allocate(size)); }
void* operator new[](std::size_t size) { return orThrow(allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return orThrow(allocateAligned(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return orThrow(allocateAligned(size, alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
