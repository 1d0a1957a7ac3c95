#pragma once

#include <cstddef>

void* utCalloc(std::size_t count, std::size_t size);
void* utMalloc(std::size_t size);
void utFree(void* pointer);
std::size_t utStrlen(const char* text);
