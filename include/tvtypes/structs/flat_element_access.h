/// \file
/// View of the leaves of a struct type.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/structs/struct_element_access.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// \addtogroup structs
/// @{

namespace TVTypeSys {

class DFSElementAccess;

/// View of the leaves, which are the depth-first nodes that are not structs. The getters return
/// what DFSElementAccess returns for the node.
class TVTYPES_API FlatElementAccess : public StructElementAccess {
  public:
    /// Constructs a view of the struct type `dataTypeId` of `table`.
    FlatElementAccess(const DataTypeTable* table, int dataTypeId);
    ~FlatElementAccess() override;

    TVTYPES_ELEMENT_GETTERS_OVERRIDE

    /// Returns the depth-first index of a leaf. The first call computes the table of one instance
    /// if the struct type has none, in time proportional to the number of its nodes.
    int getDFSIdx(int flatIdx);

    /// \name Position of a leaf
    /// @{

    /// Same as the functions of DFSElementAccess, for the index of a leaf.
    void getImmediateParentDTypeIdAndOffset(int flatIdx, int& parentDataTypeId, int& elementIdx);
    void getFullPath(int flatIdx, bool includeRoot, std::vector<std::pair<std::string, int>>& path);
    /// @}

  private:
    std::unique_ptr<DFSElementAccess> dfsAccess_;
};

} // namespace TVTypeSys

/// @}
