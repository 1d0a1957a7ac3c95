// Unaligned vectors.
#pragma once

#include <cstring>
#include <vector>

// The elements, preceded by one byte.
template <class Element>
std::vector<unsigned char> behindOneByte(const std::vector<Element>& elements) {
    std::vector<unsigned char> bytes(1 + elements.size() * sizeof(Element));
    std::memcpy(bytes.data() + 1, elements.data(), bytes.size() - 1);
    return bytes;
}
