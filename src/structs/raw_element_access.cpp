// The view of the stored scalars.
#include "structs/element_properties.h"
#include "structs/walk.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/raw_element_access.h>

#include <limits>

namespace TVTypeSys {

RawElementAccess::RawElementAccess(const DataTypeTable* table, int dataTypeId)
    : table_(table), dataTypeId_(dataTypeId) {}

bool RawElementAccess::isIdxValid(int index) { return index >= 0 && index < getNumElements(); }

int RawElementAccess::getNumElements() {
    return requireStruct(*table_, dataTypeId_).getNumRawElements();
}

void RawElementAccess::computeDataTypeIdAndIndex(int rawIdx, int& immediateIdx, int& dataTypeId,
                                                 int& rawBase) {
    const Root root = findRoot(*table_, dataTypeId_);
    if (rawBase > rawIdx) {
        dataTypeId = requireElement(root.type, immediateIdx).dataTypeId;
        return;
    }
    ElementStarts& starts = ViewPositions::get(positions_, root).raw.starts(root.type);
    // Raw indices from the start of the struct: of the start of the search, and of the scalar.
    const std::int64_t from = starts.start(*table_, root.type, immediateIdx);
    const std::int64_t wanted = from + rawIdx - rawBase;
    if (wanted > std::numeric_limits<int>::max()) {
        throwInvalidIndex(root.type, rawIdx);
    }
    const Step step = starts.find(*table_, root.type, static_cast<int>(wanted));
    rawBase = truncateToInt(rawBase + starts.start(*table_, root.type, step.element) - from);
    immediateIdx = step.element;
    dataTypeId = step.typeId;
}

int RawElementAccess::getDataTypeId(int rawIdx) {
    const Root root = findRoot(*table_, dataTypeId_);
    return ViewPositions::get(positions_, root).raw.find(*table_, root, rawIdx).typeId;
}

int RawElementAccess::getUnitId(int rawIdx) {
    const Root root = findRoot(*table_, dataTypeId_);
    const Place place = ViewPositions::get(positions_, root).raw.find(*table_, root, rawIdx);
    return requireElement(*place.type, place.element).unitId;
}

int RawElementAccess::getOffset(int rawIdx) {
    const Root root = findRoot(*table_, dataTypeId_);
    ElementWalk& walk = ViewPositions::get(positions_, root).raw;
    const Place place = walk.find(*table_, root, rawIdx);
    const long long scalarsBefore = rawIdx - place.start;
    const long long inStruct = requireElement(*place.type, place.element).offset +
                               scalarsBefore * typeSize(*table_, place.typeId);
    return truncateToInt(inStruct + walk.pathOffset(*table_, byteOffset));
}

} // namespace TVTypeSys
