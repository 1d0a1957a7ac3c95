/// \file
/// View of the immediate elements of a struct type.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/structs/struct_element_access.h>

/// \addtogroup structs
/// @{

class StructElement;

namespace TVTypeSys {

/// View of the elements of the struct itself, as the client has set them. It caches nothing except
/// where the elements start in the raw numbering.
class TVTYPES_API ImmediateElementAccess : public StructElementAccess {
  public:
    /// Constructs a view of the struct type `dataTypeId` of `table`.
    ImmediateElementAccess(const DataTypeTable* table, int dataTypeId);

    TVTYPES_ELEMENT_GETTERS_OVERRIDE

    /// \name Specified limits
    /// @{

    /// Return whether the lower or upper limit is specified.
    bool getMinSpec(int index);
    bool getMaxSpec(int index);
    /// @}

    /// Returns whether every dimension is 1, which includes no dimensions.
    bool isScalar(int index);

    /// Returns the number of bytes between the end of an element and the start of the next one, or
    /// the end of the struct after the last element.
    int getPadding(int index);

    /// Sets flags for the contents of the struct and of all buses nested in it: whether an element
    /// is an array of buses, has variable dimensions, or is frame based. Flags are never cleared.
    ///
    /// A bus is a struct with StructDataType::isBusType; an array of buses is one whose dimensions
    /// are variable or not all 1. The search stops as soon as `*aob` and one of the other two are
    /// set, so the third may stay false.
    void containsAoBOrVarDimsOrFrames(bool* aob, bool* varDims, bool* frames);

    /// Returns the raw index of the first scalar of an element. For `index` equal to the number of
    /// elements returns the number of scalars.
    int getRawElementIdx(int index);

  private:
    StructElement& element(int index);
};

} // namespace TVTypeSys

/// @}
