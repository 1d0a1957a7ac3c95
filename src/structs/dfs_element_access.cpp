// The view of the depth-first nodes.
#include "structs/element_properties.h"
#include "structs/node_cache.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structs/dfs_element_access.h>

#include <iterator>

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
LevelStep stepInto(const DataTypeTable& table, const Root& root, ElementWalk& walk, int dfsIdx) {
    const Instance instance = splitIndex(root.type, dfsIdx);
    if (dfsIdx == 0) {
        return {-1, 0, root.typeId, -1};
    }
    if (instance.number > 0) {
        return {-1, instance.number, root.typeId, dfsIdx - instance.index};
    }
    const Step step = walk.starts(root.type).find(table, root.type, dfsIdx);
    if (step.copy) {
        return {step.element, *step.copy, step.typeId, step.start};
    }
    const bool isHeader = findStruct(table, step.typeId) != nullptr;
    return {step.element, isHeader ? -1 : 0, step.typeId, isHeader ? -1 : step.start};
}

} // namespace

ElementWalk& DFSElementAccess::depthFirstWalk(const Root& root) {
    return ViewPositions::get(positions(), root).depthFirst;
}

DFSElementAccess::DFSElementAccess(const DataTypeTable* table, int dataTypeId)
    : StructElementAccess(table, dataTypeId) {}

StructElement* DFSElementAccess::getStructElement(int dfsIdx) {
    const Root root = findRoot(table(), dataTypeId());
    return &nodeElement(table(), root, positions(), dfsIdx);
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
    const Root root = findRoot(table(), dataTypeId());
    return nodeOffset(table(), root, positions(), byteOffset, index);
}

int DFSElementAccess::getVarDimsOffset(int index) {
    const Root root = findRoot(table(), dataTypeId());
    return nodeOffset(table(), root, positions(), varDimsOffset, index);
}

void DFSElementAccess::computeDataTypeIdAndIndex(int dfsIdx, int* immediateIdx, int* copyIdx,
                                                 int* dataTypeId, int* subIdx) {
    const Root root = findRoot(table(), this->dataTypeId());
    const LevelStep step = stepInto(table(), root, depthFirstWalk(root), dfsIdx);
    *immediateIdx = step.immediateIdx;
    *copyIdx = step.copyIdx;
    *dataTypeId = step.dataTypeId;
    *subIdx = step.subIdx;
}

void DFSElementAccess::getImmediateParentDTypeIdAndOffset(int dfsIdx, int& parentDataTypeId,
                                                          int& elementIdx) {
    const Root root = findRoot(table(), dataTypeId());
    ElementWalk& walk = depthFirstWalk(root);
    const Place place = walk.find(table(), root, splitIndex(root.type, dfsIdx).index);
    const std::vector<Level>& path = walk.path();
    const bool isStruct = place.element < 0;
    if (isStruct && path.size() == 1) {
        parentDataTypeId = INVALID_DATA_TYPE_ID;
        elementIdx = -1;
        return;
    }
    parentDataTypeId = path[path.size() - (isStruct ? 2 : 1)].typeId;
    elementIdx = isStruct ? path.back().element : place.element;
}

void DFSElementAccess::getFullPath(int dfsIdx, bool includeRoot,
                                   std::vector<std::pair<std::string, int>>& path) {
    std::vector<std::pair<std::string, int>> found;
    ElementWalk& walk = depthFirstWalk(findRoot(table(), dataTypeId()));
    if (includeRoot && dfsIdx < getNumElements()) {
        found.emplace_back("", 0);
    }
    int typeId = dataTypeId();
    int index = dfsIdx;
    while (true) {
        const Root level = findRoot(table(), typeId);
        const LevelStep step = stepInto(table(), level, walk, index);
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
    path.insert(path.end(), std::make_move_iterator(found.begin()),
                std::make_move_iterator(found.end()));
}

int DFSElementAccess::getRawElementIdx(int dfsIdx) {
    if (dfsIdx < 1) {
        return 0;
    }
    const Root root = findRoot(table(), dataTypeId());
    const Instance instance = splitIndex(root.type, dfsIdx);
    ViewPositions& kept = ViewPositions::get(positions(), root);
    const auto scalarsOf = [&](int node) {
        const Place place = kept.depthFirst.find(table(), root, node);
        const bool isLeaf = findStruct(table(), place.typeId) == nullptr;
        return static_cast<unsigned>(
            isLeaf ? complexWidth(requireElement(*place.type, place.element)) : 0);
    };
    // Counts on or back from the node of the last call.
    const auto countTo = [&](int node) {
        while (kept.counted.node < node) {
            kept.counted.scalars += scalarsOf(kept.counted.node);
            ++kept.counted.node;
        }
        while (kept.counted.node > node) {
            kept.counted.scalars -= scalarsOf(kept.counted.node - 1);
            --kept.counted.node;
        }
        return kept.counted.scalars;
    };
    if (instance.number > 0 && !kept.scalarsOfInstance) {
        kept.scalarsOfInstance = countTo(root.type.getNumDFSElements());
    }
    return static_cast<int>(static_cast<unsigned>(instance.number) *
                                kept.scalarsOfInstance.value_or(0) +
                            countTo(instance.index));
}

} // namespace TVTypeSys
