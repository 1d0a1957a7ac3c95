#include "structs/depth_first_nodes.h"
#include "structs/elements.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>

namespace TVTypeSys {

namespace {

/// One level down, as computeDataTypeIdAndIndex tells it.
struct LevelStep {
    int immediateIdx;
    int copyIdx;
    int dataTypeId;
    int subIdx;
};

LevelStep stepInto(const DataTypeTable& table, const Outermost& outermost, int dfsIdx) {
    const Instance instance = instanceOf(outermost.type, dfsIdx);
    if (dfsIdx == 0) {
        return {-1, 0, outermost.typeId, -1};
    }
    if (instance.number > 0) {
        return {-1, instance.number, outermost.typeId, dfsIdx - instance.index};
    }
    const Step step =
        ViewMemory::of(outermost.type).depthFirst.starts.stepTo(table, outermost.type, dfsIdx);
    if (step.copy) {
        return {step.element, *step.copy, step.typeId, step.start};
    }
    const bool isHeader = structAt(table, step.typeId) != nullptr;
    return {step.element, isHeader ? -1 : 0, step.typeId, isHeader ? -1 : step.start};
}

} // namespace

DFSElementAccess::DFSElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId) {}

StructElement* DFSElementAccess::getStructElement(int dfsIdx) {
    return &elementOf(table(), outermostOf(table(), dataTypeId()), dfsIdx);
}

int DFSElementAccess::getNumElements() {
    return structOf(table(), dataTypeId()).getNumDFSElements();
}

const char* DFSElementAccess::getName(int index) { return getStructElement(index)->name.c_str(); }
int DFSElementAccess::getDataTypeId(int index) { return getStructElement(index)->dataTypeId; }
int DFSElementAccess::getUnitId(int index) { return getStructElement(index)->unitId; }
int DFSElementAccess::getNumDimensions(int index) { return getStructElement(index)->numDimensions; }
int* DFSElementAccess::getDimensions(int index) { return getStructElement(index)->dimensions; }
int DFSElementAccess::getWidth(int index) { return widthOf(*getStructElement(index)); }
int DFSElementAccess::getSignalType(int index) { return getStructElement(index)->signalType; }
int DFSElementAccess::getSamplingMode(int index) { return getStructElement(index)->samplingMode; }
int DFSElementAccess::getDimensionsMode(int index) {
    return getStructElement(index)->dimensionsMode;
}
double DFSElementAccess::getMin(int index) { return getStructElement(index)->min; }
double DFSElementAccess::getMax(int index) { return getStructElement(index)->max; }
bool DFSElementAccess::isIdxValid(int /*index*/) { return true; }

int DFSElementAccess::getOffset(int index) {
    return offsetOf(table(), outermostOf(table(), dataTypeId()), byteOffset, index);
}

int DFSElementAccess::getVarDimsOffset(int index) {
    return offsetOf(table(), outermostOf(table(), dataTypeId()), varDimsOffset, index);
}

void DFSElementAccess::computeDataTypeIdAndIndex(int dfsIdx, int* immediateIdx, int* copyIdx,
                                                 int* dataTypeId, int* subIdx) {
    const LevelStep step = stepInto(table(), outermostOf(table(), this->dataTypeId()), dfsIdx);
    *immediateIdx = step.immediateIdx;
    *copyIdx = step.copyIdx;
    *dataTypeId = step.dataTypeId;
    *subIdx = step.subIdx;
}

void DFSElementAccess::getImmediateParentDTypeIdAndOffset(int dfsIdx, int& parentDataTypeId,
                                                          int& elementIdx) {
    const Outermost outermost = outermostOf(table(), dataTypeId());
    const Place place = placeOf(table(), outermost, instanceOf(outermost.type, dfsIdx).index);
    const Nesting* const parent = place.element < 0 ? place.within->parent : place.within;
    if (parent == nullptr) {
        parentDataTypeId = INVALID_DATA_TYPE_ID;
        elementIdx = -1;
        return;
    }
    parentDataTypeId = typeIdOf(outermost, *parent);
    elementIdx = place.element < 0 ? place.within->element : place.element;
}

void DFSElementAccess::getFullPath(int dfsIdx, bool includeRoot,
                                   std::vector<std::pair<std::string, int>>& path) {
    std::vector<std::pair<std::string, int>> found;
    if (includeRoot && dfsIdx < getNumElements()) {
        found.emplace_back("", 0);
    }
    int typeId = dataTypeId();
    int index = dfsIdx;
    while (true) {
        const Outermost level = outermostOf(table(), typeId);
        const LevelStep step = stepInto(table(), level, index);
        const bool isStruct = structAt(table(), step.dataTypeId) != nullptr;
        std::string name;
        int copy = isStruct ? step.copyIdx : -1;
        if (step.immediateIdx >= 0) {
            const StructElement& element = elementAt(level.type, step.immediateIdx);
            name = element.name;
            copy = widthOf(element) == 1 ? -1 : copy;
        }
        // The struct itself is named by its element, one level up.
        const bool isBottom = step.subIdx < 0;
        if (!isBottom || !name.empty()) {
            found.emplace_back(std::move(name), copy);
        }
        if (isBottom || !isStruct) {
            break;
        }
        typeId = step.dataTypeId;
        index -= step.subIdx;
    }
    path.insert(path.end(), found.begin(), found.end());
}

int DFSElementAccess::getRawElementIdx(int dfsIdx) {
    if (dfsIdx < 1) {
        return 0;
    }
    const Outermost outermost = outermostOf(table(), dataTypeId());
    const Instance instance = instanceOf(outermost.type, dfsIdx);
    std::vector<unsigned>& ahead = ViewMemory::of(outermost.type).scalarsAhead;
    // All of one instance lies ahead of a further one.
    const int needed = instance.number > 0 ? outermost.type.getNumDFSElements() : instance.index;
    for (auto node = static_cast<int>(ahead.size()) - 1; node < needed; ++node) {
        const Place place = placeOf(table(), outermost, node);
        const bool isLeaf = structAt(table(), place.typeId) == nullptr;
        const int scalars = isLeaf ? complexWidthOf(elementAt(*place.type, place.element)) : 0;
        ahead.push_back(ahead.back() + static_cast<unsigned>(scalars));
    }
    return static_cast<int>(static_cast<unsigned>(instance.number) *
                                ahead[static_cast<std::size_t>(needed)] +
                            ahead[static_cast<std::size_t>(instance.index)]);
}

} // namespace TVTypeSys
