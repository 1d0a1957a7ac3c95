#include "structs/elements.h"
#include "structs/view_memory.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/functions.h>

#include <unordered_set>
#include <vector>

namespace TVTypeSys {

ImmediateElementAccess::ImmediateElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId) {}

StructElement& ImmediateElementAccess::element(int index) {
    return elementAt(structOf(table(), dataTypeId()), index);
}

int ImmediateElementAccess::getNumElements() {
    return structOf(table(), dataTypeId()).getNumElements();
}

const char* ImmediateElementAccess::getName(int index) { return element(index).name.c_str(); }
int ImmediateElementAccess::getDataTypeId(int index) { return element(index).dataTypeId; }
int ImmediateElementAccess::getUnitId(int index) { return element(index).unitId; }
int ImmediateElementAccess::getNumDimensions(int index) { return element(index).numDimensions; }
int* ImmediateElementAccess::getDimensions(int index) { return element(index).dimensions; }
int ImmediateElementAccess::getWidth(int index) { return widthOf(element(index)); }
int ImmediateElementAccess::getOffset(int index) { return element(index).offset; }
int ImmediateElementAccess::getVarDimsOffset(int index) { return element(index).varDimsOffset; }
int ImmediateElementAccess::getSignalType(int index) { return element(index).signalType; }
int ImmediateElementAccess::getSamplingMode(int index) { return element(index).samplingMode; }
int ImmediateElementAccess::getDimensionsMode(int index) { return element(index).dimensionsMode; }
double ImmediateElementAccess::getMin(int index) { return element(index).min; }
double ImmediateElementAccess::getMax(int index) { return element(index).max; }
bool ImmediateElementAccess::getMinSpec(int index) { return element(index).getMinSpec(); }
bool ImmediateElementAccess::getMaxSpec(int index) { return element(index).getMaxSpec(); }
bool ImmediateElementAccess::isScalar(int index) { return TVTypeSys::isScalar(element(index)); }

bool ImmediateElementAccess::isIdxValid(int index) {
    return index >= 0 && index < getNumElements();
}

int ImmediateElementAccess::getPadding(int index) {
    const StructDataType& type = structOf(table(), dataTypeId());
    const StructElement& element = elementAt(type, index);
    const bool isLast = index == type.getNumElements() - 1;
    const long long next = isLast ? type.getSize() : elementAt(type, index + 1).offset;
    const long long size =
        static_cast<long long>(sizeOfType(table(), element.dataTypeId)) * complexWidthOf(element);
    return wrapped(next - element.offset - size);
}

void ImmediateElementAccess::containsAoBOrVarDimsOrFrames(bool* aob, bool* varDims, bool* frames) {
    struct Visit {
        const StructDataType* type;
        std::size_t next = 0;
    };
    const StructDataType& outermost = structOf(table(), dataTypeId());
    // A bus that is met again has nothing new.
    std::unordered_set<const StructDataType*> met{&outermost};
    std::vector<Visit> path{{&outermost}};
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
            const StructDataType& bus = structOf(table(), element.dataTypeId);
            if (met.insert(&bus).second) {
                path.push_back({&bus});
            }
        }
    }
}

int ImmediateElementAccess::getRawElementIdx(int index) {
    StructDataType& type = structOf(table(), dataTypeId());
    return wrapped(ViewMemory::of(type).raw.starts.startOf(table(), type, index));
}

} // namespace TVTypeSys
