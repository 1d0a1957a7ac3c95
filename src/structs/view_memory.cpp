#include "structs/view_memory.h"

DFSElementCache::~DFSElementCache() {
    if (ownsElement && element != nullptr) {
        element->dimensions = nullptr;
        delete element;
    }
}

namespace TVTypeSys {

ViewMemory& ViewMemory::of(StructDataType& type) {
    if (type.viewMemory_ == nullptr) {
        type.viewMemory_ = std::make_unique<ViewMemory>();
    }
    return *type.viewMemory_;
}

void ViewMemory::forgetPositions() {
    depthFirst.forget();
    raw.forget();
    scalarsAhead.assign(1, 0);
}

} // namespace TVTypeSys
