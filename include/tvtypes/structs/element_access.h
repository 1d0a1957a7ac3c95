/// \file
/// Four numberings of what lies inside a struct type, each read through a view.
///
/// | View                   | An index names                                                    |
/// |------------------------|-------------------------------------------------------------------|
/// | ImmediateElementAccess | an element of the struct itself                                   |
/// | DFSElementAccess       | a node of the depth-first walk through all nested structs: node 0 |
/// |                        | is the struct; an array of structs is a header node and a subtree |
/// |                        | a copy; an element that is no struct is one node, array or not    |
/// | FlatElementAccess      | a depth-first node that is no struct                              |
/// | RawElementAccess       | a scalar in storage; real and imaginary parts count apart         |
///
/// A view is made for a struct type of a table or for an alias of one, and keeps no more than the
/// two. What it finds is remembered in the struct type, so a read writes there: a type is read by
/// one thread at a time.
///
/// Elements, counts and offsets are as the client has set them (structdatatype.h). The types of the
/// elements must stand in the table. Offsets are bytes from the start of the struct. A width is the
/// product of the dimensions, 1 if there are none. Texts, dimensions and elements that a view
/// hands out belong to the struct type.
///
/// Every operation that takes an index is refused with TorvaneTypes::general::InvalidStructIndex
/// (name, index) for an index that names nothing, and with InvalidDataTypeId (id) if a type on the
/// way is not in the table or the type of the view is no struct. What was refused has changed
/// nothing. None recurs, however deep the nesting.
#pragma once

#include <tvtypes/export.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

class StructElement;

namespace TVTypeSys {

class DataTypeTable;

/// What can be asked in three of the numberings.
class TVTYPES_API StructElementAccess {
  public:
    virtual ~StructElementAccess();
    StructElementAccess(const StructElementAccess&) = delete;
    StructElementAccess& operator=(const StructElementAccess&) = delete;

    /// How many indices one instance of the struct has.
    virtual int getNumElements() = 0;
    virtual const char* getName(int index) = 0;
    virtual int getDataTypeId(int index) = 0;
    virtual int getUnitId(int index) = 0;
    virtual int getNumDimensions(int index) = 0;
    virtual int* getDimensions(int index) = 0;
    virtual int getWidth(int index) = 0;
    /// The width, doubled for a complex element.
    virtual int getComplexWidth(int index);
    virtual int getOffset(int index) = 0;
    virtual int getVarDimsOffset(int index) = 0;
    virtual int getSignalType(int index) = 0;
    virtual int getSamplingMode(int index) = 0;
    virtual int getDimensionsMode(int index) = 0;
    virtual double getMin(int index) = 0;
    virtual double getMax(int index) = 0;
    virtual bool isIdxValid(int index) = 0;

  protected:
    StructElementAccess(const DataTypeTable* table, int dataTypeId)
        : table_(table), dataTypeId_(dataTypeId) {}

    const DataTypeTable& table() const { return *table_; }
    int dataTypeId() const { return dataTypeId_; }

  private:
    const DataTypeTable* table_;
    int dataTypeId_;
};

/// The elements of the struct itself, just as they have been set. Remembers nothing but where raw
/// indices begin.
class TVTYPES_API ImmediateElementAccess : public StructElementAccess {
  public:
    ImmediateElementAccess(const DataTypeTable* table, int dataTypeId);

    int getNumElements() override;
    const char* getName(int index) override;
    int getDataTypeId(int index) override;
    int getUnitId(int index) override;
    int getNumDimensions(int index) override;
    int* getDimensions(int index) override;
    int getWidth(int index) override;
    int getOffset(int index) override;
    int getVarDimsOffset(int index) override;
    int getSignalType(int index) override;
    int getSamplingMode(int index) override;
    int getDimensionsMode(int index) override;
    double getMin(int index) override;
    double getMax(int index) override;
    /// Whether the struct has an element with this index.
    bool isIdxValid(int index) override;

    /// Whether a limit is specified.
    bool getMinSpec(int index);
    bool getMaxSpec(int index);

    /// Whether every dimension is 1; no dimensions are scalar too.
    bool isScalar(int index);

    /// The bytes between the end of an element and the next one, or the end of the struct.
    int getPadding(int index);

    /// Sets the flags of what the struct and the buses within it hold; one that is set stays so.
    /// An array of buses is a bus whose dimensions are not all 1, or variable. Looks no further
    /// once `aob` and one of the other two are set. A bus is a struct whose isBusType says so.
    void containsAoBOrVarDimsOrFrames(bool* aob, bool* varDims, bool* frames);

    /// The raw index of the element's first scalar; for the number of elements, that of all.
    int getRawElementIdx(int index);

  private:
    StructElement& element(int index);
};

/// The nodes of the depth-first walk. An index past one instance of the struct means a node of a
/// further instance behind it.
class TVTYPES_API DFSElementAccess : public StructElementAccess {
  public:
    DFSElementAccess(const DataTypeTable* table, int dataTypeId);

    int getNumElements() override;
    const char* getName(int index) override;
    int getDataTypeId(int index) override;
    int getUnitId(int index) override;
    int getNumDimensions(int index) override;
    int* getDimensions(int index) override;
    int getWidth(int index) override;
    int getOffset(int index) override;
    int getVarDimsOffset(int index) override;
    int getSignalType(int index) override;
    int getSamplingMode(int index) override;
    int getDimensionsMode(int index) override;
    double getMin(int index) override;
    double getMax(int index) override;
    /// True: every index from 0 up names a node of some instance.
    bool isIdxValid(int index) override;

    /// Where a node lies, one level of nesting down: in the element `immediateIdx`, copy `copyIdx`
    /// of it, of the type `dataTypeId`, of which the nodes begin at `subIdx`.
    ///
    /// | Node                          | `immediateIdx` | `copyIdx` | `subIdx`                    |
    /// |-------------------------------|----------------|-----------|-----------------------------|
    /// | 0, the struct                 | -1             | 0         | -1                          |
    /// | header of an array of structs | element        | -1        | -1                          |
    /// | of a struct or of a copy      | element        | from 0    | `dfsIdx` or less: the index |
    /// |                               |                |           | in the type is the rest     |
    /// | any other element             | element        | 0         | `dfsIdx`                    |
    /// | of a further instance q       | -1             | q         | of the instance             |
    void computeDataTypeIdAndIndex(int dfsIdx, int* immediateIdx, int* copyIdx, int* dataTypeId,
                                   int* subIdx);

    /// The element of a node. A struct has one made for it, without dimensions or modes of its
    /// own; that of node 0 has no name.
    StructElement* getStructElement(int dfsIdx);

    /// The struct that holds the node, and the element in it; INVALID_DATA_TYPE_ID and -1 for
    /// node 0.
    void getImmediateParentDTypeIdAndOffset(int dfsIdx, int& parentDataTypeId, int& elementIdx);

    /// Appends the names on the way to a node, the outermost first, each with its index in an
    /// array of structs, or -1. `includeRoot` puts ("", 0) ahead; a further instance q begins with
    /// ("", q).
    void getFullPath(int dfsIdx, bool includeRoot, std::vector<std::pair<std::string, int>>& path);

    /// How many scalars are stored ahead of a node; 0 for an index below 1.
    int getRawElementIdx(int dfsIdx);
};

/// The leaves: the depth-first nodes that are no structs, and what the depth-first view says of
/// them.
class TVTYPES_API FlatElementAccess : public StructElementAccess {
  public:
    FlatElementAccess(const DataTypeTable* table, int dataTypeId);
    ~FlatElementAccess() override;

    int getNumElements() override;
    const char* getName(int index) override;
    int getDataTypeId(int index) override;
    int getUnitId(int index) override;
    int getNumDimensions(int index) override;
    int* getDimensions(int index) override;
    int getWidth(int index) override;
    int getOffset(int index) override;
    int getVarDimsOffset(int index) override;
    int getSignalType(int index) override;
    int getSamplingMode(int index) override;
    int getDimensionsMode(int index) override;
    double getMin(int index) override;
    double getMax(int index) override;
    /// True: every index from 0 up names a leaf of some instance.
    bool isIdxValid(int index) override;

    /// The depth-first index of a leaf. The first call makes the table of one instance, unless the
    /// type has one.
    int getDFSIdx(int flatIdx);

    void getImmediateParentDTypeIdAndOffset(int flatIdx, int& parentDataTypeId, int& elementIdx);
    void getFullPath(int flatIdx, bool includeRoot, std::vector<std::pair<std::string, int>>& path);

  private:
    std::unique_ptr<DFSElementAccess> dfsAccess_;
};

/// The scalars in storage. Complex data is interleaved, real then imaginary.
class TVTYPES_API RawElementAccess {
  public:
    RawElementAccess(const DataTypeTable* table, int dataTypeId);

    /// Whether one instance of the struct has a scalar with this index.
    bool isIdxValid(int index);
    int getNumElements();

    /// The element that holds a scalar, its type, and the raw index at which it begins. Starts
    /// from `immediateIdx` and `rawBase`: 0 and 0, or an element and where it begins.
    void computeDataTypeIdAndIndex(int rawIdx, int& immediateIdx, int& dataTypeId, int& rawBase);

    /// What holds the scalar, at the bottom of all nesting.
    int getDataTypeId(int rawIdx);
    int getUnitId(int rawIdx);
    int getOffset(int rawIdx);

  private:
    const DataTypeTable* table_;
    int dataTypeId_;
};

} // namespace TVTypeSys
