/// \file
/// Elements and offsets of the nodes of the depth-first numbering, cached in the struct types.
#pragma once

#include "structs/walk.h"

namespace TVTypeSys {

/// Number of an instance of the whole struct, and an index within it.
struct Instance {
    int number;
    int index;
};

/// Splits a depth-first index into instance and index. Throws InvalidStructIndex.
Instance splitIndex(const StructDataType& type, int dfsIdx);

/// Returns the element of a node, and makes one for a struct. Throws InvalidStructIndex. Uses and
/// updates the positions that a view keeps if the node is not cached.
StructElement& nodeElement(const DataTypeTable& table, const Root& root,
                           std::shared_ptr<ViewPositions>& positions, int dfsIdx);

/// Returns the offset of a node from the start of the first instance. Throws InvalidStructIndex.
/// Uses the positions as nodeElement does.
int nodeOffset(const DataTypeTable& table, const Root& root,
               std::shared_ptr<ViewPositions>& positions, const OffsetKind& kind, int dfsIdx);

} // namespace TVTypeSys
