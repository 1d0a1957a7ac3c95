/// \file
/// Elements of vectors that may lie at any address.
#pragma once

#include <cstddef>
#include <cstring>

namespace TVTypeSys {

/// The element at an index of a vector of `Element`.
template <class Element>
Element elementAt(const void* vector, std::size_t index) {
    Element element;
    std::memcpy(&element, static_cast<const unsigned char*>(vector) + index * sizeof element,
                sizeof element);
    return element;
}

} // namespace TVTypeSys
