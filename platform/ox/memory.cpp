#include <ox/array.h>

#include <cstdint>
#include <cstdlib>

void* oxCallocEx(std::size_t count, std::size_t elementSize) {
    // Not left to calloc: under a memory checker it ends the process at such a request.
    constexpr std::size_t most = PTRDIFF_MAX;
    if (elementSize != 0 && count > most / elementSize) {
        return nullptr;
    }
    return std::calloc(count, elementSize);
}

void oxFreeEx(void* memory) { std::free(memory); }
