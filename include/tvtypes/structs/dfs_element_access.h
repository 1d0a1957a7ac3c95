/// \file
/// View of the depth-first nodes of a struct type.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/structs/struct_element_access.h>

#include <string>
#include <utility>
#include <vector>

/// \addtogroup structs
/// @{

class StructElement;

namespace TVTypeSys {

class ElementWalk;
struct Root;

/// View of the nodes of the depth-first walk through all nested structs.
///
/// Node 0 is the struct itself. An array of structs is a header node, followed by the nodes of each
/// copy. An element that is not a struct is one node, array or not. An index past one instance of
/// the struct belongs to a further instance, which follows in memory.
class TVTYPES_API DFSElementAccess : public StructElementAccess {
  public:
    /// Constructs a view of the struct type `dataTypeId` of `table`.
    DFSElementAccess(const DataTypeTable* table, int dataTypeId);

    TVTYPES_ELEMENT_GETTERS_OVERRIDE

    /// Resolves a node by one level of nesting: returns the immediate element that contains it, the
    /// copy in an array of structs, the type of the element, and the index at which the nodes of
    /// that type or copy start.
    ///
    /// | Node                            | `immediateIdx` | `copyIdx`  | `subIdx`                 |
    /// |---------------------------------|----------------|------------|--------------------------|
    /// | 0, the struct itself            | -1             | 0          | -1                       |
    /// | header of an array of structs   | element        | -1         | -1                       |
    /// | node of a struct or of one copy | element        | from 0     | first node of the copy;  |
    /// |                                 |                |            | `dfsIdx` minus `subIdx`  |
    /// |                                 |                |            | is the index in the type |
    /// | any other element               | element        | 0          | `dfsIdx`                 |
    /// | node of a further instance      | -1             | instance   | first node of the        |
    /// |                                 |                |            | instance                 |
    void computeDataTypeIdAndIndex(int dfsIdx, int* immediateIdx, int* copyIdx, int* dataTypeId,
                                   int* subIdx);

    /// Returns the element of a node. For a struct it is made on the first call, with one dimension
    /// of 1 and all modes 0; for node 0 it has no name.
    StructElement* getStructElement(int dfsIdx);

    /// Returns the type id of the struct that directly contains a node, and the index of the
    /// element in it; INVALID_DATA_TYPE_ID and -1 for node 0.
    void getImmediateParentDTypeIdAndOffset(int dfsIdx, int& parentDataTypeId, int& elementIdx);

    /// Appends the names on the path to a node, outermost first, each with its index in an array of
    /// structs, or -1. With `includeRoot` the path starts with ("", 0). The path to a node of the
    /// further instance q starts with ("", q), with or without `includeRoot`.
    void getFullPath(int dfsIdx, bool includeRoot, std::vector<std::pair<std::string, int>>& path);

    /// Returns the number of scalars before a node, which is the raw index of its first scalar; 0
    /// for an index below 1. Takes time proportional to the distance from the node of the last call
    /// on this view, or from node 0.
    int getRawElementIdx(int dfsIdx);

  private:
    TVTYPES_LOCAL ElementWalk& depthFirstWalk(const Root& root);
};

} // namespace TVTypeSys

/// @}
