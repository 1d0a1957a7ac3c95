#include "services/memory.h"

#include <tvtypes/structs/struct_element.h>

StructElement::StructElement() = default;

StructElement::~StructElement() { TVTypeSys::releaseMemory(dimensions); }

void StructElement::setName(const char* newName) { name = newName == nullptr ? "" : newName; }

bool StructElement::getMinSpec() const { return min != -std::numeric_limits<double>::infinity(); }

bool StructElement::getMaxSpec() const { return max != std::numeric_limits<double>::infinity(); }

DFSElementCache::~DFSElementCache() {
    if (ownsElement && element != nullptr) {
        element->dimensions = nullptr; // borrowed
        delete element;
    }
}
