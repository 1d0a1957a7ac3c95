#include "structs/elements.h"
#include "structs/walk.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>

#include <limits>

namespace TVTypeSys {

namespace {

Place placeOf(const DataTypeTable& table, const Outermost& outermost, int rawIdx) {
    return locate(table, outermost, &ViewMemory::raw, rawIdx);
}

} // namespace

RawElementAccess::RawElementAccess(const DataTypeTable* table, int dataTypeId)
    : table_(table), dataTypeId_(dataTypeId) {}

bool RawElementAccess::isIdxValid(int index) { return index >= 0 && index < getNumElements(); }

int RawElementAccess::getNumElements() {
    return structOf(*table_, dataTypeId_).getNumRawElements();
}

void RawElementAccess::computeDataTypeIdAndIndex(int rawIdx, int& immediateIdx, int& dataTypeId,
                                                 int& rawBase) {
    StructDataType& type = structOf(*table_, dataTypeId_);
    ElementStarts& starts = ViewMemory::of(type).raw.starts;
    // As an index of the whole struct: where the caller starts from, and what is looked for.
    const std::int64_t from = starts.startOf(*table_, type, immediateIdx);
    const std::int64_t wanted = from + rawIdx - rawBase;
    if (wanted < from || wanted > std::numeric_limits<int>::max()) {
        refuseIndex(type, rawIdx);
    }
    const Step step = starts.stepTo(*table_, type, static_cast<int>(wanted));
    rawBase = wrapped(rawBase + starts.startOf(*table_, type, step.element) - from);
    immediateIdx = step.element;
    dataTypeId = step.typeId;
}

int RawElementAccess::getDataTypeId(int rawIdx) {
    return placeOf(*table_, outermostOf(*table_, dataTypeId_), rawIdx).typeId;
}

int RawElementAccess::getUnitId(int rawIdx) {
    const Place place = placeOf(*table_, outermostOf(*table_, dataTypeId_), rawIdx);
    return elementAt(*place.type, place.element).unitId;
}

int RawElementAccess::getOffset(int rawIdx) {
    const Outermost outermost = outermostOf(*table_, dataTypeId_);
    const Place place = placeOf(*table_, outermost, rawIdx);
    const long long scalarsAhead = rawIdx - place.start;
    const long long inStruct = elementAt(*place.type, place.element).offset +
                               scalarsAhead * sizeOfType(*table_, place.typeId);
    return wrapped(inStruct + offsetOf(*table_, outermost, byteOffset, *place.within));
}

} // namespace TVTypeSys
