// The view of the leaves.
#include "structs/element_properties.h"
#include "structs/node_cache.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/dfs_element_access.h>
#include <tvtypes/structs/flat_element_access.h>

namespace TVTypeSys {

namespace {

/// Returns the depth-first indices of the leaves of one instance.
std::vector<int> leafNodes(const DataTypeTable& table, const Root& root) {
    std::vector<int> leaves;
    ElementWalk walk(depthFirstNumbering);
    const int count = root.type.getNumDFSElements();
    for (int node = 0; node < count; ++node) {
        const Place place = walk.find(table, root, node);
        if (findStruct(table, place.typeId) == nullptr) {
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
    StructDataType& type = requireStruct(table(), dataTypeId());
    if (type.isFlatElementCacheEmpty()) {
        type.setDFSIdxFromFlatIdx(leafNodes(table(), {type, dataTypeId()}));
    }
    return type.getDFSIdxFromFlatIdx(flatIdx);
}

int FlatElementAccess::getNumElements() {
    return requireStruct(table(), dataTypeId()).getNumFlatElements();
}

#define ELEMENT_GETTER(Result, getter, value)                                                      \
    Result FlatElementAccess::getter(int index) { return dfsAccess_->getter(getDFSIdx(index)); }
#include "structs/element_getters.def"

int FlatElementAccess::getOffset(int index) { return dfsAccess_->getOffset(getDFSIdx(index)); }
int FlatElementAccess::getVarDimsOffset(int index) {
    return dfsAccess_->getVarDimsOffset(getDFSIdx(index));
}
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
