#include "structs/depth_first_nodes.h"

#include "structs/elements.h"

#include <memory>

namespace TVTypeSys {

namespace {

// Of a node that is a struct. Clients get a pointer through which they could write.
int singleDimension[] = {1};

void keepMade(std::unique_ptr<StructElement> element, DFSElementCache& node) {
    element->setSignalType(0);
    element->setSamplingMode(0);
    element->setDimensionsMode(0);
    node.element = element.release();
    node.ownsElement = true;
}

/// Of a struct that is the outermost one of a view.
StructElement& rootElement(const Outermost& outermost) {
    DFSElementCache& node = *outermost.type.getCachedElement(0);
    if (node.element == nullptr) {
        auto element = std::make_unique<StructElement>();
        element->setDataTypeId(outermost.typeId);
        element->setUnitId(0);
        element->setNumDimensions(1);
        element->setDimensions(singleDimension);
        keepMade(std::move(element), node);
    }
    return *node.element;
}

/// Of a struct inside another: the root element of its type, under the name that it has there. It
/// belongs to the struct that it is an element of, where every view finds the same one.
StructElement& nestedElement(const DataTypeTable& table, const Outermost& outermost,
                             const Place& place) {
    const Nesting& nesting = *place.within;
    const Nesting& parent = *nesting.parent;
    StructDataType& parentType = typeOf(table, outermost, parent);
    DFSElementCache& node = *parentType.getCachedElement(nesting.start - parent.start);
    if (node.element == nullptr) {
        const StructElement& root = rootElement({*place.type, nesting.typeId});
        auto element = std::make_unique<StructElement>();
        element->setName(elementAt(parentType, nesting.element).name.c_str());
        element->setDataTypeId(root.dataTypeId);
        element->setUnitId(root.unitId);
        element->setNumDimensions(root.numDimensions);
        element->setDimensions(root.dimensions);
        element->setMin(root.min);
        element->setMax(root.max);
        keepMade(std::move(element), node);
    }
    return *node.element;
}

/// What the struct that holds a node remembers of it: one for all places where such a struct lies.
DFSElementCache& nodeInItsStruct(const Place& place, int dfsIdx) {
    return *place.type->getCachedElement(dfsIdx - place.within->start);
}

StructElement& elementInItsStruct(const Place& place, int dfsIdx) {
    DFSElementCache& node = nodeInItsStruct(place, dfsIdx);
    if (node.element == nullptr) {
        node.element = &elementAt(*place.type, place.element);
    }
    return *node.element;
}

int offsetInItsStruct(const Place& place, const OffsetKind& kind, int dfsIdx) {
    int& offset = nodeInItsStruct(place, dfsIdx).*kind.ofNode;
    if (offset == -1) {
        offset = elementAt(*place.type, place.element).*kind.ofElement;
    }
    return offset;
}

} // namespace

Instance instanceOf(const StructDataType& type, int dfsIdx) {
    const int count = type.getNumDFSElements();
    if (dfsIdx == 0 || (dfsIdx > 0 && dfsIdx < count)) {
        return {0, dfsIdx};
    }
    if (dfsIdx < 0 || count < 1) {
        refuseIndex(type, dfsIdx);
    }
    return {dfsIdx / count, dfsIdx % count};
}

Place placeOf(const DataTypeTable& table, const Outermost& outermost, int dfsIdx) {
    return locate(table, outermost, &ViewMemory::depthFirst, dfsIdx);
}

StructElement& elementOf(const DataTypeTable& table, const Outermost& outermost, int dfsIdx) {
    const Instance instance = instanceOf(outermost.type, dfsIdx);
    DFSElementCache& node = *outermost.type.getCachedElement(dfsIdx);
    if (node.element != nullptr) {
        return *node.element;
    }
    StructElement* element = nullptr;
    if (instance.number > 0) {
        element = &elementOf(table, outermost, instance.index);
    } else if (dfsIdx == 0) {
        element = &rootElement(outermost);
    } else {
        const Place place = placeOf(table, outermost, dfsIdx);
        element = place.element < 0 ? &nestedElement(table, outermost, place)
                                    : &elementInItsStruct(place, dfsIdx);
    }
    node.element = element;
    return *element;
}

int offsetOf(const DataTypeTable& table, const Outermost& outermost, const OffsetKind& kind,
             int dfsIdx) {
    const Instance instance = instanceOf(outermost.type, dfsIdx);
    DFSElementCache& node = *outermost.type.getCachedElement(dfsIdx);
    if (node.*kind.ofNode != -1) {
        return node.*kind.ofNode;
    }
    long long offset = bytesAhead(table, kind, outermost.typeId, instance.number);
    if (instance.number > 0) {
        offset += offsetOf(table, outermost, kind, instance.index);
    } else {
        const Place place = placeOf(table, outermost, dfsIdx);
        offset += offsetOf(table, outermost, kind, *place.within);
        if (place.element >= 0) {
            offset += offsetInItsStruct(place, kind, dfsIdx);
        }
    }
    node.*kind.ofNode = wrapped(offset);
    return node.*kind.ofNode;
}

} // namespace TVTypeSys
