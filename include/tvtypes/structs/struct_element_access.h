/// \file
/// Interface that three of the four views of a struct type have in common.
#pragma once

#include <tvtypes/export.h>

#include <memory>

/// \addtogroup structs
/// @{

namespace TVTypeSys {

class DataTypeTable;
struct ViewPositions;

/// Getters of the elements or nodes of a struct type, by index in a numbering.
///
/// A view refers to a table and the id of a struct type or of an alias of one, and owns neither.
/// The types of all elements must be in the table. Elements, offsets and counts are those that the
/// client has set.
///
/// Elements and offsets of depth-first nodes and the table of the leaves are cached in the struct
/// types and stay as they were first read (StructDataType::getCachedElement), also when a nested
/// type is replaced or removed: its elements stay allocated as long as the structs around it that
/// have cached them. Everything else is read from the elements.
///
/// A view keeps the positions that it has computed, in memory proportional to the elements of the
/// types that it has read and to the depth of nesting. It computes them again when the type of the
/// view gets new elements or counts; after other changes of elements, such as their dimensions, use
/// a new view.
///
/// Reading n indices in ascending or descending order through one view takes time proportional to n
/// and to the elements. Any other read searches for the index from the root: in time logarithmic in
/// the elements and proportional to the depth through a view that has read before, and through a
/// new view linear in the elements of the structs on the path.
///
/// Reading writes to the struct types, so a table and its views are used by one thread at a time.
/// Views of different tables may be used at the same time.
///
/// Strings, dimensions and elements that a getter returns are owned by the struct type. A getter
/// throws TorvaneTypes::general::InvalidStructIndex (name, index) for an index that the struct does
/// not have, and InvalidDataTypeId (id) if the type of the view is not a struct or the type of an
/// element that it passes is not in the table; both leave the type unchanged.
///
/// Walks over nested structs are iterative: nesting of any depth needs no stack.
class TVTYPES_API StructElementAccess {
  public:
    virtual ~StructElementAccess();
    StructElementAccess(const StructElementAccess&) = delete;
    StructElementAccess& operator=(const StructElementAccess&) = delete;

    /// Returns the number of indices of one instance of the struct.
    virtual int getNumElements() = 0;
    /// Returns the name of the element, without the names of the structs around it.
    virtual const char* getName(int index) = 0;
    /// Returns the type id of the element.
    virtual int getDataTypeId(int index) = 0;
    /// Returns the unit id of the element, 0 for a depth-first node that is a struct.
    virtual int getUnitId(int index) = 0;
    /// Returns the number of dimensions.
    virtual int getNumDimensions(int index) = 0;
    /// Returns the dimensions, as many as getNumDimensions says.
    virtual int* getDimensions(int index) = 0;
    /// Returns the product of the dimensions, 1 if there are none.
    virtual int getWidth(int index) = 0;
    /// Returns the width, doubled for a complex element.
    virtual int getComplexWidth(int index);
    /// Returns the offset of the element in bytes, from the start of the struct of the view.
    virtual int getOffset(int index) = 0;
    /// Returns the offset of the variable-dimensions data, from the start of the struct of the
    /// view.
    virtual int getVarDimsOffset(int index) = 0;
    /// Returns the signal type; 1 is complex.
    virtual int getSignalType(int index) = 0;
    /// Returns the sampling mode; 1 is frame based.
    virtual int getSamplingMode(int index) = 0;
    /// Returns the dimensions mode; 1 is variable.
    virtual int getDimensionsMode(int index) = 0;
    /// Returns the lower limit in the unit of the element, or -infinity if it is not specified.
    virtual double getMin(int index) = 0;
    /// Returns the upper limit in the unit of the element, or infinity if it is not specified.
    virtual double getMax(int index) = 0;
    /// Returns whether the struct has an element with this index. The depth-first and flat views
    /// always return true, because an index past the first instance belongs to a further one.
    virtual bool isIdxValid(int index) = 0;

  protected:
    /// Constructs a view of the struct type `dataTypeId` of `table`. Nothing is checked.
    StructElementAccess(const DataTypeTable* table, int dataTypeId)
        : table_(table), dataTypeId_(dataTypeId) {}

    /// Returns the table of the view.
    const DataTypeTable& table() const { return *table_; }
    /// Returns the type id of the view.
    int dataTypeId() const { return dataTypeId_; }
    /// Returns the positions that the view keeps, null before the first use.
    std::shared_ptr<ViewPositions>& positions() { return positions_; }

  private:
    const DataTypeTable* table_;
    int dataTypeId_;
    std::shared_ptr<ViewPositions> positions_;
};

/// Declares the overrides of the getters in a view.
#define TVTYPES_ELEMENT_GETTERS_OVERRIDE                                                           \
    int getNumElements() override;                                                                 \
    const char* getName(int index) override;                                                       \
    int getDataTypeId(int index) override;                                                         \
    int getUnitId(int index) override;                                                             \
    int getNumDimensions(int index) override;                                                      \
    int* getDimensions(int index) override;                                                        \
    int getWidth(int index) override;                                                              \
    int getOffset(int index) override;                                                             \
    int getVarDimsOffset(int index) override;                                                      \
    int getSignalType(int index) override;                                                         \
    int getSamplingMode(int index) override;                                                       \
    int getDimensionsMode(int index) override;                                                     \
    double getMin(int index) override;                                                             \
    double getMax(int index) override;                                                             \
    bool isIdxValid(int index) override;

} // namespace TVTypeSys

/// @}
