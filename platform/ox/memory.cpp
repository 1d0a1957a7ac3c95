#include <ox/array.h>

#include <cstdint>
#include <cstdlib>

void* oxCallocEx(std::size_t count, std::size_t elementSize) {
    // Checked here: under AddressSanitizer, calloc ends the process on such a request.
    constexpr std::size_t largestSize = PTRDIFF_MAX;
    if (elementSize != 0 && count > largestSize / elementSize) {
        return nullptr;
    }
    return std::calloc(count, elementSize);
}

void oxFreeEx(void* memory) { std::free(memory); }
