/// \file
/// What is remembered of the nodes of the depth-first numbering: their elements and offsets.
#pragma once

#include "structs/walk.h"

namespace TVTypeSys {

/// A further instance of the whole struct, and an index within it.
struct Instance {
    int number;
    int index;
};

/// Refused with InvalidStructIndex, and so are the others.
Instance instanceOf(const StructDataType& type, int dfsIdx);

Place placeOf(const DataTypeTable& table, const Outermost& outermost, int dfsIdx);

/// The element of a node; a struct has one made for it.
StructElement& elementOf(const DataTypeTable& table, const Outermost& outermost, int dfsIdx);

int offsetOf(const DataTypeTable& table, const Outermost& outermost, const OffsetKind& kind,
             int dfsIdx);

} // namespace TVTypeSys
