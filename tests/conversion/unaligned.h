// Vectors that lie where no element of theirs would.
#pragma once

#include <cstring>
#include <vector>

// The elements one after the other, behind one byte.
template <class Element>
std::vector<unsigned char> behindOneByte(const std::vector<Element>& elements) {
    std::vector<unsigned char> bytes(1 + elements.size() * sizeof(Element));
    std::memcpy(bytes.data() + 1, elements.data(), bytes.size() - 1);
    return bytes;
}
