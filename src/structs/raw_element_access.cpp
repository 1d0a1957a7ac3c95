// The view of the stored scalars.
#include "structs/element_properties.h"
#include "structs/walk.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/raw_element_access.h>

#include <limits>

namespace TVTypeSys {

namespace {

Place locateScalar(const DataTypeTable& table, const Root& root, int rawIdx) {
    return locate(table, root, &ViewCache::raw, rawIdx);
}

} // namespace

RawElementAccess::RawElementAccess(const DataTypeTable* table, int dataTypeId)
    : table_(table), dataTypeId_(dataTypeId) {}

bool RawElementAccess::isIdxValid(int index) { return index >= 0 && index < getNumElements(); }

int RawElementAccess::getNumElements() {
    return requireStruct(*table_, dataTypeId_).getNumRawElements();
}

void RawElementAccess::computeDataTypeIdAndIndex(int rawIdx, int& immediateIdx, int& dataTypeId,
                                                 int& rawBase) {
    StructDataType& type = requireStruct(*table_, dataTypeId_);
    ElementStarts& starts = ViewCache::get(type).raw.starts;
    // Raw indices from the start of the struct: of the start of the search, and of the scalar.
    const std::int64_t from = starts.start(*table_, type, immediateIdx);
    const std::int64_t wanted = from + rawIdx - rawBase;
    if (wanted < from || wanted > std::numeric_limits<int>::max()) {
        throwInvalidIndex(type, rawIdx);
    }
    const Step step = starts.find(*table_, type, static_cast<int>(wanted));
    rawBase = truncateToInt(rawBase + starts.start(*table_, type, step.element) - from);
    immediateIdx = step.element;
    dataTypeId = step.typeId;
}

int RawElementAccess::getDataTypeId(int rawIdx) {
    return locateScalar(*table_, findRoot(*table_, dataTypeId_), rawIdx).typeId;
}

int RawElementAccess::getUnitId(int rawIdx) {
    const Place place = locateScalar(*table_, findRoot(*table_, dataTypeId_), rawIdx);
    return requireElement(*place.type, place.element).unitId;
}

int RawElementAccess::getOffset(int rawIdx) {
    const Root root = findRoot(*table_, dataTypeId_);
    const Place place = locateScalar(*table_, root, rawIdx);
    const long long scalarsBefore = rawIdx - place.start;
    const long long inStruct = requireElement(*place.type, place.element).offset +
                               scalarsBefore * typeSize(*table_, place.typeId);
    return truncateToInt(inStruct + nestingOffset(*table_, root, byteOffset, *place.within));
}

} // namespace TVTypeSys
