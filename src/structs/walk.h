/// \file
/// The walk down through nested structs to what an index names. It remembers the structs on its
/// way with the outermost one, and the next walk begins at the innermost that it knows, so that
/// walks to all indices, in any order, take one step for each struct inside.
#pragma once

#include "structs/view_memory.h"

namespace TVTypeSys {

class DataTypeTable;

/// What an index names: an element of the innermost struct around it, or that struct itself.
struct Place {
    Nesting* within = nullptr;
    StructDataType* type = nullptr; ///< of `within`
    int element = -1;               ///< in that struct; -1 for the struct itself
    int typeId = 0;                 ///< of the element, or of the struct itself
    int start = 0;                  ///< of the element, as an index of the outermost struct
};

/// A type in whose numbering a walk begins, by the id under which a view knows it.
struct Outermost {
    StructDataType& type;
    int typeId;
};

/// Refused with InvalidDataTypeId if the type is no struct.
Outermost outermostOf(const DataTypeTable& table, int typeId);

/// The type of a nesting, and the id under which it stands there.
StructDataType& typeOf(const DataTypeTable& table, const Outermost& outermost,
                       const Nesting& nesting);
int typeIdOf(const Outermost& outermost, const Nesting& nesting);

/// Refused with InvalidStructIndex for an index that nothing has, one below 0 among them.
Place locate(const DataTypeTable& table, const Outermost& outermost,
             NumberingMemory ViewMemory::*numbering, int index);

/// One of the two offsets of what lies in a struct, and where it is kept.
struct OffsetKind {
    int StructElement::*ofElement; ///< in its own struct
    int Nesting::*ofNesting;       ///< in the outermost struct
    int DFSElementCache::*ofNode;  ///< in the outermost struct
    bool countsCopies;             ///< whether each copy in an array of structs has its own
};

extern const OffsetKind byteOffset;
extern const OffsetKind varDimsOffset;

/// The bytes ahead of copy `copy` of a type, if this kind of offset counts them.
int bytesAhead(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy);

/// Where a struct begins in the outermost one: the sum of what lies on the way.
int offsetOf(const DataTypeTable& table, const Outermost& outermost, const OffsetKind& kind,
             Nesting& nesting);

} // namespace TVTypeSys
