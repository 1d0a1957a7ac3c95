#include "structs/view_cache.h"

DFSElementCache::~DFSElementCache() {
    if (ownsElement && element != nullptr) {
        element->dimensions = nullptr; // borrowed
        delete element;
    }
}

namespace TVTypeSys {

ViewCache& ViewCache::get(StructDataType& type) {
    if (type.viewCache_ == nullptr) {
        type.viewCache_ = std::make_unique<ViewCache>();
    }
    return *type.viewCache_;
}

void ViewCache::clearPositions() {
    depthFirst.clear();
    raw.clear();
    scalarsBefore.assign(1, 0);
}

} // namespace TVTypeSys
