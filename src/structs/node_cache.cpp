#include "structs/node_cache.h"

#include "structs/element_properties.h"

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

/// Returns the element of a nested struct: a copy of the root element of its type, with the name of
/// its own element. It is cached in the struct that contains it, so that all views share it.
StructElement& nestedElement(const DataTypeTable& table, const Root& root, const Place& place) {
    const Nesting& nesting = *place.within;
    const Nesting& parent = *nesting.parent;
    StructDataType& parentType = nestingType(table, root, parent);
    DFSElementCache& node = *parentType.getCachedElement(nesting.start - parent.start);
    if (node.element == nullptr) {
        const StructElement& ofType = rootElement({*place.type, nesting.typeId});
        auto element = std::make_unique<StructElement>();
        element->setName(requireElement(parentType, nesting.element).name.c_str());
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

/// Returns the cache entry of a node in the innermost struct around it, which all places of that
/// struct type share.
DFSElementCache& innermostEntry(const Place& place, int dfsIdx) {
    return *place.type->getCachedElement(dfsIdx - place.within->start);
}

/// Returns the element of a node that is not a nested struct.
StructElement& placeElement(const Place& place, int dfsIdx) {
    DFSElementCache& node = innermostEntry(place, dfsIdx);
    if (node.element == nullptr) {
        node.element = &requireElement(*place.type, place.element);
    }
    return *node.element;
}

/// Returns the offset of the element of such a node in its struct.
int elementOffset(const Place& place, const OffsetKind& kind, int dfsIdx) {
    int& offset = innermostEntry(place, dfsIdx).*kind.ofNode;
    if (offset == -1) {
        offset = requireElement(*place.type, place.element).*kind.ofElement;
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

Place locateNode(const DataTypeTable& table, const Root& root, int dfsIdx) {
    return locate(table, root, &ViewCache::depthFirst, dfsIdx);
}

StructElement& nodeElement(const DataTypeTable& table, const Root& root, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    DFSElementCache& node = *root.type.getCachedElement(dfsIdx);
    if (node.element != nullptr) {
        return *node.element;
    }
    StructElement* element = nullptr;
    if (instance.number > 0) {
        element = &nodeElement(table, root, instance.index);
    } else if (dfsIdx == 0) {
        element = &rootElement(root);
    } else {
        const Place place = locateNode(table, root, dfsIdx);
        element =
            place.element < 0 ? &nestedElement(table, root, place) : &placeElement(place, dfsIdx);
    }
    node.element = element;
    return *element;
}

int nodeOffset(const DataTypeTable& table, const Root& root, const OffsetKind& kind, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    DFSElementCache& node = *root.type.getCachedElement(dfsIdx);
    if (node.*kind.ofNode != -1) {
        return node.*kind.ofNode;
    }
    long long offset = copyOffset(table, kind, root.typeId, instance.number);
    if (instance.number > 0) {
        offset += nodeOffset(table, root, kind, instance.index);
    } else {
        const Place place = locateNode(table, root, dfsIdx);
        offset += nestingOffset(table, root, kind, *place.within);
        if (place.element >= 0) {
            offset += elementOffset(place, kind, dfsIdx);
        }
    }
    node.*kind.ofNode = truncateToInt(offset);
    return node.*kind.ofNode;
}

} // namespace TVTypeSys
