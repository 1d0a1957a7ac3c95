/// \file
/// View of the stored scalars of a struct type.
#pragma once

#include <tvtypes/export.h>

#include <memory>

/// \addtogroup structs
/// @{

namespace TVTypeSys {

class DataTypeTable;
struct ViewPositions;

/// View of the scalars in storage, through all nested structs. A complex value is two scalars, real
/// then imaginary. Errors, ownership, kept positions and threads are as in StructElementAccess.
///
/// Nothing is cached in the struct types. Copies of a view share the positions that they keep.
class TVTYPES_API RawElementAccess {
  public:
    /// Constructs a view of the struct type `dataTypeId` of `table`.
    RawElementAccess(const DataTypeTable* table, int dataTypeId);

    /// Returns whether one instance of the struct has a scalar with this index.
    bool isIdxValid(int index);
    /// Returns the number of scalars of one instance.
    int getNumElements();

    /// Finds the immediate element that contains a scalar; returns the element, its type id, and
    /// the raw index of its first scalar. `immediateIdx` and `rawBase` are also the start of the
    /// search: an element and the raw index of its first scalar, such as 0 and 0. A start behind
    /// the scalar is returned as it is, with its type id.
    void computeDataTypeIdAndIndex(int rawIdx, int& immediateIdx, int& dataTypeId, int& rawBase);

    /// \name Innermost element of a scalar
    /// @{

    /// Return the type id and the unit id of the innermost element that contains the scalar, and
    /// the offset of the scalar in bytes from the start of the struct.
    int getDataTypeId(int rawIdx);
    int getUnitId(int rawIdx);
    int getOffset(int rawIdx);
    /// @}

  private:
    const DataTypeTable* table_;
    int dataTypeId_;
    std::shared_ptr<ViewPositions> positions_;
};

} // namespace TVTypeSys

/// @}
