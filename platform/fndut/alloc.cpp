#include <fndut/alloc.h>

#include <cstdlib>
#include <cstring>

void* utCalloc(std::size_t count, std::size_t size) { return std::calloc(count, size); }

void* utMalloc(std::size_t size) { return std::malloc(size); }

void utFree(void* pointer) { std::free(pointer); }

std::size_t utStrlen(const char* text) { return text == nullptr ? 0 : std::strlen(text); }
