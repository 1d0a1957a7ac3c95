/// \file
/// Access to elements of vectors with any alignment.
#pragma once

#include <cstddef>
#include <cstring>

namespace TVTypeSys {

/// Returns the element of type `Element` at an index.
template <class Element>
Element elementAt(const void* vector, std::size_t index) {
    Element element;
    std::memcpy(&element, static_cast<const unsigned char*>(vector) + index * sizeof element,
                sizeof element);
    return element;
}

} // namespace TVTypeSys
