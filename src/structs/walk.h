/// \file
/// Resolution of an index to the innermost struct around it.
///
/// The walk starts at the innermost nesting that is cached in the root and adds those that it
/// finds. Walks to all indices of a struct, in any order, take one step for each nested struct.
#pragma once

#include "structs/view_cache.h"

namespace TVTypeSys {

class DataTypeTable;

/// Position of an index: an element of the innermost struct around it, or that struct itself.
struct Place {
    Nesting* within = nullptr;      ///< innermost struct
    StructDataType* type = nullptr; ///< type of `within`
    int element = -1;               ///< element of `type`; -1 for the struct itself
    int typeId = 0;                 ///< type of the element, or of the struct itself
    int start = 0;                  ///< first index of the element in the root
};

/// Root of a walk: a struct type, and the id (of the type or an alias) that the view has for it.
struct Root {
    StructDataType& type;
    int typeId;
};

/// Returns the struct type of a view as a root. Throws InvalidDataTypeId if it is not a struct.
Root findRoot(const DataTypeTable& table, int typeId);

/// Returns the struct type of a nesting, and the id that its element has for it.
StructDataType& nestingType(const DataTypeTable& table, const Root& root, const Nesting& nesting);
int nestingTypeId(const Root& root, const Nesting& nesting);

/// Finds the place of an index. Throws InvalidStructIndex, also for an index below 0.
Place locate(const DataTypeTable& table, const Root& root, NumberingCache ViewCache::*numbering,
             int index);

/// One of the two kinds of offsets, and the fields that hold it.
struct OffsetKind {
    int StructElement::*ofElement; ///< from the start of the struct that has the element
    int Nesting::*ofNesting;       ///< from the start of the root
    int DFSElementCache::*ofNode;  ///< from the start of the root
    bool differsByCopy;            ///< whether each copy in an array of structs has its own
};

extern const OffsetKind byteOffset;
extern const OffsetKind varDimsOffset;

/// Returns the offset of copy `copy` of a type from the first copy.
int copyOffset(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy);

/// Returns the offset of a nested struct from the start of the root: the sum over its parents.
int nestingOffset(const DataTypeTable& table, const Root& root, const OffsetKind& kind,
                  Nesting& nesting);

} // namespace TVTypeSys
