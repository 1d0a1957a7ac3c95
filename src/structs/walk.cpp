#include "structs/walk.h"

#include "structs/element_properties.h"

#include <tvtypes/datatypetable.h>

#include <vector>

namespace TVTypeSys {

Root findRoot(const DataTypeTable& table, int typeId) {
    return {requireStruct(table, typeId), typeId};
}

StructDataType& nestingType(const DataTypeTable& table, const Root& root, const Nesting& nesting) {
    return nesting.parent == nullptr ? root.type : requireStruct(table, nesting.typeId);
}

int nestingTypeId(const Root& root, const Nesting& nesting) {
    return nesting.parent == nullptr ? root.typeId : nesting.typeId;
}

Place locate(const DataTypeTable& table, const Root& root, NumberingCache ViewCache::*numbering,
             int index) {
    if (index < 0) {
        throwInvalidIndex(root.type, index);
    }
    Nestings& nestings = (ViewCache::get(root.type).*numbering).nestings;
    Nesting* nesting = &nestings.innermost(index);
    while (true) {
        StructDataType& type = nestingType(table, root, *nesting);
        NumberingCache& cache = ViewCache::get(type).*numbering;
        const int inNesting = index - nesting->start;
        if (inNesting < cache.firstElement) {
            return {nesting, &type, -1, nestingTypeId(root, *nesting), nesting->start};
        }
        const Step step = cache.starts.find(table, type, inNesting);
        const int start = nesting->start + step.start;
        if (!step.copy) {
            return {nesting, &type, step.element, step.typeId, start};
        }
        // Detects a cycle: more nestings than types means that a struct contains itself.
        if (nesting->depth > table.getNumDataTypes()) {
            throwInvalidIndex(root.type, index);
        }
        Nesting found;
        found.parent = nesting;
        found.typeId = step.typeId;
        found.element = step.element;
        found.copy = *step.copy;
        found.start = start;
        found.end = start + step.copySize;
        found.depth = nesting->depth + 1;
        nesting = &nestings.add(found);
    }
}

constinit const OffsetKind byteOffset{&StructElement::offset, &Nesting::offset,
                                      &DFSElementCache::offset, true};
constinit const OffsetKind varDimsOffset{&StructElement::varDimsOffset, &Nesting::varDimsOffset,
                                         &DFSElementCache::varDimsOffset, false};

int copyOffset(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy) {
    return kind.differsByCopy && copy > 0
               ? truncateToInt(static_cast<long long>(copy) * typeSize(table, typeId))
               : 0;
}

int nestingOffset(const DataTypeTable& table, const Root& root, const OffsetKind& kind,
                  Nesting& nesting) {
    std::vector<Nesting*> unknown;
    Nesting* known = &nesting;
    for (; known->*kind.ofNesting == -1; known = known->parent) {
        unknown.push_back(known);
    }
    int offset = known->*kind.ofNesting;
    for (; !unknown.empty(); unknown.pop_back()) {
        Nesting* const inner = unknown.back();
        const StructDataType& parent = nestingType(table, root, *inner->parent);
        const long long inParent = requireElement(parent, inner->element).*kind.ofElement;
        offset =
            truncateToInt(offset + inParent + copyOffset(table, kind, inner->typeId, inner->copy));
        inner->*kind.ofNesting = offset;
    }
    return offset;
}

} // namespace TVTypeSys
