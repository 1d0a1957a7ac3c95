// The view of the immediate elements.
#include "structs/element_properties.h"
#include "structs/walk.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/bus_functions.h>
#include <tvtypes/structs/immediate_element_access.h>

#include <unordered_set>
#include <vector>

namespace TVTypeSys {

ImmediateElementAccess::ImmediateElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId) {}

StructElement& ImmediateElementAccess::element(int index) {
    return requireElement(requireStruct(table(), dataTypeId()), index);
}

int ImmediateElementAccess::getNumElements() {
    return requireStruct(table(), dataTypeId()).getNumElements();
}

#define ELEMENT_GETTER(Result, getter, value)                                                      \
    Result ImmediateElementAccess::getter(int index) {                                             \
        StructElement& element = this->element(index);                                             \
        return value;                                                                              \
    }
#include "structs/element_getters.def"

int ImmediateElementAccess::getOffset(int index) { return element(index).offset; }
int ImmediateElementAccess::getVarDimsOffset(int index) { return element(index).varDimsOffset; }
bool ImmediateElementAccess::getMinSpec(int index) { return element(index).getMinSpec(); }
bool ImmediateElementAccess::getMaxSpec(int index) { return element(index).getMaxSpec(); }
bool ImmediateElementAccess::isScalar(int index) { return TVTypeSys::isScalar(element(index)); }

bool ImmediateElementAccess::isIdxValid(int index) {
    return index >= 0 && index < getNumElements();
}

int ImmediateElementAccess::getPadding(int index) {
    const StructDataType& type = requireStruct(table(), dataTypeId());
    const StructElement& element = requireElement(type, index);
    const bool isLast = index == type.getNumElements() - 1;
    const long long next = isLast ? type.getSize() : requireElement(type, index + 1).offset;
    const long long size =
        static_cast<long long>(typeSize(table(), element.dataTypeId)) * complexWidth(element);
    return truncateToInt(next - element.offset - size);
}

void ImmediateElementAccess::containsAoBOrVarDimsOrFrames(bool* aob, bool* varDims, bool* frames) {
    struct Visit {
        const StructDataType* type;
        std::size_t next = 0;
    };
    const StructDataType& root = requireStruct(table(), dataTypeId());
    // A bus is searched once.
    std::unordered_set<const StructDataType*> visited{&root};
    std::vector<Visit> path{{&root}};
    while (!path.empty()) {
        Visit& visit = path.back();
        if (visit.next == visit.type->getElements().size()) {
            path.pop_back();
            continue;
        }
        const StructElement& element = *visit.type->getElements()[visit.next++];
        const bool isBus = DtGetDataTypeIsBus(&table(), element.dataTypeId);
        const bool isVariable = element.dimensionsMode == 1;
        *frames = *frames || element.samplingMode == 1;
        *varDims = *varDims || isVariable;
        *aob = *aob || (isBus && (isVariable || !TVTypeSys::isScalar(element)));
        if (*aob && (*frames || *varDims)) {
            return;
        }
        if (isBus) {
            const StructDataType& bus = requireStruct(table(), element.dataTypeId);
            if (visited.insert(&bus).second) {
                path.push_back({&bus});
            }
        }
    }
}

int ImmediateElementAccess::getRawElementIdx(int index) {
    const Root root = findRoot(table(), dataTypeId());
    ElementStarts& starts = ViewPositions::get(positions(), root).raw.starts(root.type);
    return truncateToInt(starts.start(table(), root.type, index));
}

} // namespace TVTypeSys
