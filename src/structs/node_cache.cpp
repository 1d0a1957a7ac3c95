// A node is cached in the root and in the type of each struct on the path to it, so that the value
// that another copy or another view has read is found on the way. Nodes that are nested deeper than
// ElementWalk::maxShallow are cached in the root and in the innermost struct: with a cache in each
// type, memory would be quadratic in the depth.
#include "structs/node_cache.h"

#include "structs/element_cache.h"
#include "structs/element_properties.h"

#include <algorithm>
#include <array>
#include <memory>

namespace TVTypeSys {

namespace {

// Dimensions of every node that is a struct. Not const: clients get them as int*.
int singleDimension[] = {1};

/// Sets the modes of an element that was made for a node, and stores it in the node's cache entry,
/// which then owns it.
void storeOwned(std::unique_ptr<StructElement> element, DFSElementCache& node) {
    element->setSignalType(0);
    element->setSamplingMode(0);
    element->setDimensionsMode(0);
    node.element = element.release();
    node.ownsElement = true;
}

/// Returns the element of the root itself.
StructElement& rootElement(const Root& root) {
    DFSElementCache& node = *root.type.getCachedElement(0);
    if (node.element == nullptr) {
        auto element = std::make_unique<StructElement>();
        element->setDataTypeId(root.typeId);
        element->setUnitId(0);
        element->setNumDimensions(1);
        element->setDimensions(singleDimension);
        storeOwned(std::move(element), node);
    }
    return *node.element;
}

/// Returns the element of the innermost struct of a path: a copy of the root element of its type,
/// with the name of its own element. It is cached in the struct that contains it, so that all views
/// share it.
StructElement& nestedElement(const std::vector<Level>& path) {
    const Level& level = path.back();
    const Level& parent = path[path.size() - 2];
    DFSElementCache& node = *parent.type->getCachedElement(level.start - parent.start);
    if (node.element == nullptr) {
        const StructElement& ofType = rootElement({*level.type, level.typeId});
        auto element = std::make_unique<StructElement>();
        element->setName(requireElement(*parent.type, level.element).name.c_str());
        element->setDataTypeId(ofType.dataTypeId);
        element->setUnitId(ofType.unitId);
        element->setNumDimensions(ofType.numDimensions);
        element->setDimensions(ofType.dimensions);
        element->setMin(ofType.min);
        element->setMax(ofType.max);
        storeOwned(std::move(element), node);
    }
    return *node.element;
}

/// Returns the level of the struct that owns the element of a place: the innermost one, or the one
/// around it for a nested struct.
std::size_t ownerLevel(const Place& place, const std::vector<Level>& path) {
    return path.size() - (place.element < 0 ? 2 : 1);
}

/// Returns whether an element is the one that its place has now. Cached elements stay the same when
/// the element, or the type that owns it, is replaced.
bool isCurrent(const StructElement& element, const Place& place, const std::vector<Level>& path) {
    if (place.element < 0) {
        const Level& parent = path[path.size() - 2];
        const DFSElementCache& node = *parent.type->getCachedElement(place.start - parent.start);
        return node.ownsElement && node.element == &element;
    }
    const std::vector<StructElement*>& elements = StructLookup::elements(*place.type);
    const auto index = static_cast<std::size_t>(place.element);
    return index < elements.size() && elements[index] == &element;
}

/// Shares an element that the type of level `source` has cached with the caches of the first
/// `levels` levels.
void shareElement(const StructElement& element, const Place& place, const std::vector<Level>& path,
                  std::size_t levels, std::size_t source) {
    const auto cache = [&path](std::size_t level) -> ElementCache& {
        return ElementCache::of(*path[level].type);
    };
    const bool hasOwner = isCurrent(element, place, path);
    for (std::size_t level = 0; level < levels; ++level) {
        if (hasOwner) {
            cache(level).share(cache(ownerLevel(place, path)));
        } else {
            cache(level).shareAllOf(cache(source));
        }
    }
}

/// Cache entries of one node in the types of the first `levels` structs on the path to it, or in
/// the root alone if there are more than ElementWalk::maxShallow. Adds empty entries.
class Entries {
  public:
    Entries(DFSElementCache& ofRoot, const std::vector<Level>& path, std::size_t levels, int dfsIdx)
        : count_(levels <= ElementWalk::maxShallow ? levels : 1) {
        entries_[0] = &ofRoot;
        for (std::size_t level = 1; level < count_; ++level) {
            entries_[level] = path[level].type->getCachedElement(dfsIdx - path[level].start);
        }
    }

    std::size_t size() const { return count_; }
    DFSElementCache& operator[](std::size_t level) const { return *entries_[level]; }

    /// Returns the first level whose entry has a value in `field`, or the number of levels.
    template <class Field>
    std::size_t firstKnown(Field DFSElementCache::*field, Field unknown) const {
        std::size_t level = 0;
        while (level < count_ && entries_[level]->*field == unknown) {
            ++level;
        }
        return level;
    }

  private:
    std::size_t count_;
    std::array<DFSElementCache*, ElementWalk::maxShallow> entries_;
};

/// Returns the offset of an element in the innermost struct, 0 for the struct itself.
int offsetInInnermost(const Place& place, const Level& innermost, const OffsetKind& kind,
                      int dfsIdx) {
    int& offset = innermost.type->getCachedElement(dfsIdx - innermost.start)->*kind.ofNode;
    if (offset == -1) {
        offset = place.element < 0 ? 0 : requireElement(*place.type, place.element).*kind.ofElement;
    }
    return offset;
}

} // namespace

Instance splitIndex(const StructDataType& type, int dfsIdx) {
    const int count = type.getNumDFSElements();
    if (dfsIdx == 0 || (dfsIdx > 0 && dfsIdx < count)) {
        return {0, dfsIdx};
    }
    if (dfsIdx < 0 || count < 1) {
        throwInvalidIndex(type, dfsIdx);
    }
    return {dfsIdx / count, dfsIdx % count};
}

StructElement& nodeElement(const DataTypeTable& table, const Root& root,
                           std::shared_ptr<ViewPositions>& positions, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    DFSElementCache& node = *root.type.getCachedElement(dfsIdx);
    if (node.element != nullptr) {
        return *node.element;
    }
    if (instance.number > 0) {
        node.element = &nodeElement(table, root, positions, instance.index);
        return *node.element;
    }
    if (dfsIdx == 0) {
        return rootElement(root);
    }
    ElementWalk& walk = ViewPositions::get(positions, root).depthFirst;
    const Place place = walk.find(table, root, dfsIdx);
    const std::vector<Level>& path = walk.path();
    const bool isNested = place.element < 0;
    // The entries of a nested struct are those of its element.
    const Entries entries(node, path, path.size() - (isNested ? 1 : 0), dfsIdx);
    const std::size_t known =
        entries.firstKnown<StructElement*>(&DFSElementCache::element, nullptr);
    std::size_t source = ownerLevel(place, path);
    StructElement* element = nullptr;
    if (known < entries.size()) {
        element = entries[known].element;
        source = known;
    } else if (isNested) {
        element = &nestedElement(path);
    } else {
        DFSElementCache& innermost = *place.type->getCachedElement(dfsIdx - path.back().start);
        if (innermost.element == nullptr) {
            innermost.element = &requireElement(*place.type, place.element);
        }
        element = innermost.element;
    }
    if (const std::size_t levels = std::min(known, source); levels > 0) {
        shareElement(*element, place, path, levels, source);
    }
    for (std::size_t level = 0; level < known; ++level) {
        entries[level].element = element;
    }
    return *element;
}

int nodeOffset(const DataTypeTable& table, const Root& root,
               std::shared_ptr<ViewPositions>& positions, const OffsetKind& kind, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    DFSElementCache& node = *root.type.getCachedElement(dfsIdx);
    if (node.*kind.ofNode != -1) {
        return node.*kind.ofNode;
    }
    if (instance.number > 0) {
        const long long inInstance = nodeOffset(table, root, positions, kind, instance.index);
        node.*kind.ofNode =
            truncateToInt(inInstance + copyOffset(table, kind, root.typeId, instance.number));
        return node.*kind.ofNode;
    }
    ElementWalk& walk = ViewPositions::get(positions, root).depthFirst;
    const Place place = walk.find(table, root, dfsIdx);
    const std::vector<Level>& path = walk.path();
    const Entries entries(node, path, path.size(), dfsIdx);
    std::size_t level = entries.firstKnown(kind.ofNode, -1);
    int offset = 0;
    if (level < entries.size()) {
        offset = entries[level].*kind.ofNode;
    } else {
        offset = offsetInInnermost(place, path.back(), kind, dfsIdx);
        level = entries.size() - 1;
        if (path.size() > entries.size()) {
            offset = truncateToInt(static_cast<long long>(offset) + walk.pathOffset(table, kind));
            entries[level].*kind.ofNode = offset;
        }
    }
    for (; level > 0; --level) {
        offset =
            truncateToInt(static_cast<long long>(offset) + walk.offsetInParent(table, kind, level));
        entries[level - 1].*kind.ofNode = offset;
    }
    return offset;
}

} // namespace TVTypeSys
