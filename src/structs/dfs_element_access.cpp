// The view of the depth-first nodes.
#include "structs/element_properties.h"
#include "structs/node_cache.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/dfs_element_access.h>

namespace TVTypeSys {

namespace {

/// Result of DFSElementAccess::computeDataTypeIdAndIndex.
struct LevelStep {
    int immediateIdx;
    int copyIdx;
    int dataTypeId;
    int subIdx;
};

/// Resolves a node by one level of nesting.
LevelStep stepInto(const DataTypeTable& table, const Root& root, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    if (dfsIdx == 0) {
        return {-1, 0, root.typeId, -1};
    }
    if (instance.number > 0) {
        return {-1, instance.number, root.typeId, dfsIdx - instance.index};
    }
    const Step step = ViewCache::get(root.type).depthFirst.starts.find(table, root.type, dfsIdx);
    if (step.copy) {
        return {step.element, *step.copy, step.typeId, step.start};
    }
    const bool isHeader = findStruct(table, step.typeId) != nullptr;
    return {step.element, isHeader ? -1 : 0, step.typeId, isHeader ? -1 : step.start};
}

} // namespace

DFSElementAccess::DFSElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId) {}

StructElement* DFSElementAccess::getStructElement(int dfsIdx) {
    return &nodeElement(table(), findRoot(table(), dataTypeId()), dfsIdx);
}

int DFSElementAccess::getNumElements() {
    return requireStruct(table(), dataTypeId()).getNumDFSElements();
}

#define ELEMENT_GETTER(Result, getter, value)                                                      \
    Result DFSElementAccess::getter(int index) {                                                   \
        StructElement& element = *getStructElement(index);                                         \
        return value;                                                                              \
    }
#include "structs/element_getters.def"

bool DFSElementAccess::isIdxValid(int /*index*/) { return true; }

int DFSElementAccess::getOffset(int index) {
    return nodeOffset(table(), findRoot(table(), dataTypeId()), byteOffset, index);
}

int DFSElementAccess::getVarDimsOffset(int index) {
    return nodeOffset(table(), findRoot(table(), dataTypeId()), varDimsOffset, index);
}

void DFSElementAccess::computeDataTypeIdAndIndex(int dfsIdx, int* immediateIdx, int* copyIdx,
                                                 int* dataTypeId, int* subIdx) {
    const LevelStep step = stepInto(table(), findRoot(table(), this->dataTypeId()), dfsIdx);
    *immediateIdx = step.immediateIdx;
    *copyIdx = step.copyIdx;
    *dataTypeId = step.dataTypeId;
    *subIdx = step.subIdx;
}

void DFSElementAccess::getImmediateParentDTypeIdAndOffset(int dfsIdx, int& parentDataTypeId,
                                                          int& elementIdx) {
    const Root root = findRoot(table(), dataTypeId());
    const Place place = locateNode(table(), root, splitIndex(root.type, dfsIdx).index);
    const Nesting* const parent = place.element < 0 ? place.within->parent : place.within;
    if (parent == nullptr) {
        parentDataTypeId = INVALID_DATA_TYPE_ID;
        elementIdx = -1;
        return;
    }
    parentDataTypeId = nestingTypeId(root, *parent);
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
        const Root level = findRoot(table(), typeId);
        const LevelStep step = stepInto(table(), level, index);
        const bool isStruct = findStruct(table(), step.dataTypeId) != nullptr;
        std::string name;
        int copy = isStruct ? step.copyIdx : -1;
        if (step.immediateIdx >= 0) {
            const StructElement& element = requireElement(level.type, step.immediateIdx);
            name = element.name;
            copy = width(element) == 1 ? -1 : copy;
        }
        // Node 0 of a nested struct has no name here: its element is already on the path.
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
    const Root root = findRoot(table(), dataTypeId());
    const Instance instance = splitIndex(root.type, dfsIdx);
    std::vector<unsigned>& before = ViewCache::get(root.type).scalarsBefore;
    // A further instance needs the sum over a whole one.
    const int needed = instance.number > 0 ? root.type.getNumDFSElements() : instance.index;
    for (auto node = static_cast<int>(before.size()) - 1; node < needed; ++node) {
        const Place place = locateNode(table(), root, node);
        const bool isLeaf = findStruct(table(), place.typeId) == nullptr;
        const int scalars = isLeaf ? complexWidth(requireElement(*place.type, place.element)) : 0;
        before.push_back(before.back() + static_cast<unsigned>(scalars));
    }
    return static_cast<int>(static_cast<unsigned>(instance.number) *
                                before[static_cast<std::size_t>(needed)] +
                            before[static_cast<std::size_t>(instance.index)]);
}

} // namespace TVTypeSys
