#include "structs/element_cache.h"

#include <utility>

namespace TVTypeSys {

ElementCache& ElementCache::make(StructDataType& type) {
    type.elementCache_ = std::make_unique<ElementCache>();
    return *type.elementCache_;
}

void ElementCache::retire(std::unique_ptr<ElementCache> cache,
                          std::vector<std::unique_ptr<StructElement>> elements) noexcept {
    // First, since the cache may share the elements of its own type, and since a chain of retired
    // caches would be destroyed recursively.
    cache->shared_.clear();
    if (const std::shared_ptr<Retired> retired = std::exchange(cache->retired_, nullptr)) {
        retired->elements = std::move(elements);
        retired->cache = std::move(cache);
    }
}

void ElementCache::selectPage(int number) {
    Page& page = this->page(number);
    if (number == lastNumber_ + 1) {
        // The elements of a deep hierarchy are far apart: reading them in order waits for each.
        for (const DFSElementCache& node : page) {
            if (node.element != nullptr) {
                __builtin_prefetch(&node.element->dataTypeId);
            }
        }
    }
    last_ = &page;
    lastNumber_ = number;
}

ElementCache::Page& ElementCache::page(int number) {
    if (number == 0) {
        return first_;
    }
    std::unique_ptr<Page>& page = others_[number];
    if (page == nullptr) {
        page = std::make_unique<Page>();
    }
    return *page;
}

void ElementCache::addShared(ElementCache& owner) {
    if (owner.retired_ == nullptr) {
        owner.retired_ = std::make_shared<Retired>();
    }
    shared_.insert(owner.retired_);
    lastShared_ = owner.retired_.get();
}

void ElementCache::shareAllOf(ElementCache& other) {
    share(other);
    if (&other != this) {
        shared_.insert(other.shared_.begin(), other.shared_.end());
    }
}

} // namespace TVTypeSys
