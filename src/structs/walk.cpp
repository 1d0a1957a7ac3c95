#include "structs/walk.h"

#include "structs/elements.h"

#include <tvtypes/datatypetable.h>

#include <vector>

namespace TVTypeSys {

Outermost outermostOf(const DataTypeTable& table, int typeId) {
    return {structOf(table, typeId), typeId};
}

StructDataType& typeOf(const DataTypeTable& table, const Outermost& outermost,
                       const Nesting& nesting) {
    return nesting.parent == nullptr ? outermost.type : structOf(table, nesting.typeId);
}

int typeIdOf(const Outermost& outermost, const Nesting& nesting) {
    return nesting.parent == nullptr ? outermost.typeId : nesting.typeId;
}

Place locate(const DataTypeTable& table, const Outermost& outermost,
             NumberingMemory ViewMemory::*numbering, int index) {
    if (index < 0) {
        refuseIndex(outermost.type, index);
    }
    Nestings& nestings = (ViewMemory::of(outermost.type).*numbering).nestings;
    Nesting* nesting = &nestings.innermost(index);
    while (true) {
        StructDataType& type = typeOf(table, outermost, *nesting);
        NumberingMemory& memory = ViewMemory::of(type).*numbering;
        const int rest = index - nesting->start;
        if (rest < memory.firstElement) {
            return {nesting, &type, -1, typeIdOf(outermost, *nesting), nesting->start};
        }
        const Step step = memory.starts.stepTo(table, type, rest);
        const int start = nesting->start + step.start;
        if (!step.copy) {
            return {nesting, &type, step.element, step.typeId, start};
        }
        // A chain longer than there are types comes back to one: a struct that contains itself.
        if (nesting->depth > table.getNumDataTypes()) {
            refuseIndex(outermost.type, index);
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

int bytesAhead(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy) {
    return kind.countsCopies && copy > 0
               ? wrapped(static_cast<long long>(copy) * sizeOfType(table, typeId))
               : 0;
}

int offsetOf(const DataTypeTable& table, const Outermost& outermost, const OffsetKind& kind,
             Nesting& nesting) {
    std::vector<Nesting*> unknown;
    Nesting* known = &nesting;
    for (; known->*kind.ofNesting == -1; known = known->parent) {
        unknown.push_back(known);
    }
    int offset = known->*kind.ofNesting;
    for (; !unknown.empty(); unknown.pop_back()) {
        Nesting* const inner = unknown.back();
        const StructDataType& parent = typeOf(table, outermost, *inner->parent);
        const long long inParent = elementAt(parent, inner->element).*kind.ofElement;
        offset = wrapped(offset + inParent + bytesAhead(table, kind, inner->typeId, inner->copy));
        inner->*kind.ofNesting = offset;
    }
    return offset;
}

} // namespace TVTypeSys
