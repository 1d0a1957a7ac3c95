#include "structs/depth_first_nodes.h"
#include "structs/elements.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>

namespace TVTypeSys {

namespace {

std::vector<int> leavesOf(const DataTypeTable& table, const Outermost& outermost) {
    std::vector<int> leaves;
    const int count = outermost.type.getNumDFSElements();
    for (int node = 0; node < count; ++node) {
        const Place place = placeOf(table, outermost, node);
        if (structAt(table, place.typeId) == nullptr) {
            leaves.push_back(node);
        }
    }
    return leaves;
}

} // namespace

FlatElementAccess::FlatElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId),
      dfsAccess_(std::make_unique<DFSElementAccess>(table, dataTypeId)) {}

FlatElementAccess::~FlatElementAccess() = default;

int FlatElementAccess::getDFSIdx(int flatIdx) {
    StructDataType& type = structOf(table(), dataTypeId());
    if (type.isFlatElementCacheEmpty()) {
        type.setDFSIdxFromFlatIdx(leavesOf(table(), {type, dataTypeId()}));
    }
    return type.getDFSIdxFromFlatIdx(flatIdx);
}

int FlatElementAccess::getNumElements() {
    return structOf(table(), dataTypeId()).getNumFlatElements();
}

const char* FlatElementAccess::getName(int index) { return dfsAccess_->getName(getDFSIdx(index)); }
int FlatElementAccess::getDataTypeId(int index) {
    return dfsAccess_->getDataTypeId(getDFSIdx(index));
}
int FlatElementAccess::getUnitId(int index) { return dfsAccess_->getUnitId(getDFSIdx(index)); }
int FlatElementAccess::getNumDimensions(int index) {
    return dfsAccess_->getNumDimensions(getDFSIdx(index));
}
int* FlatElementAccess::getDimensions(int index) {
    return dfsAccess_->getDimensions(getDFSIdx(index));
}
int FlatElementAccess::getWidth(int index) { return dfsAccess_->getWidth(getDFSIdx(index)); }
int FlatElementAccess::getOffset(int index) { return dfsAccess_->getOffset(getDFSIdx(index)); }
int FlatElementAccess::getVarDimsOffset(int index) {
    return dfsAccess_->getVarDimsOffset(getDFSIdx(index));
}
int FlatElementAccess::getSignalType(int index) {
    return dfsAccess_->getSignalType(getDFSIdx(index));
}
int FlatElementAccess::getSamplingMode(int index) {
    return dfsAccess_->getSamplingMode(getDFSIdx(index));
}
int FlatElementAccess::getDimensionsMode(int index) {
    return dfsAccess_->getDimensionsMode(getDFSIdx(index));
}
double FlatElementAccess::getMin(int index) { return dfsAccess_->getMin(getDFSIdx(index)); }
double FlatElementAccess::getMax(int index) { return dfsAccess_->getMax(getDFSIdx(index)); }
bool FlatElementAccess::isIdxValid(int /*index*/) { return true; }

void FlatElementAccess::getImmediateParentDTypeIdAndOffset(int flatIdx, int& parentDataTypeId,
                                                           int& elementIdx) {
    dfsAccess_->getImmediateParentDTypeIdAndOffset(getDFSIdx(flatIdx), parentDataTypeId,
                                                   elementIdx);
}

void FlatElementAccess::getFullPath(int flatIdx, bool includeRoot,
                                    std::vector<std::pair<std::string, int>>& path) {
    dfsAccess_->getFullPath(getDFSIdx(flatIdx), includeRoot, path);
}

} // namespace TVTypeSys
