/// \file
/// Struct (bus) types and their elements. What lies inside is read through the views of
/// elementaccess.h.
#pragma once

#include <tvtypes/registry/data_type.h>
#include <tvtypes/export.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace TVTypeSys {
class DataTypeTable;
struct ViewMemory;
} // namespace TVTypeSys

/// A checksum of four words.
struct tvChecksumValue {
    std::uint32_t words[4];
};

/// One element of a struct. The fields are public; the setters are plain stores.
class TVTYPES_API StructElement {
  public:
    StructElement() = default;
    ~StructElement();
    StructElement(const StructElement&) = delete;
    StructElement& operator=(const StructElement&) = delete;

    /// Null counts as "".
    void setName(const char* newName);
    void setDataTypeId(int id) { dataTypeId = id; }
    void setUnitId(int id) { unitId = id; }
    void setNumDimensions(int count) { numDimensions = count; }
    /// Takes over an array made with utCalloc or utMalloc. One held before is not released.
    void setDimensions(int* sizes) { dimensions = sizes; }
    void setOffset(int bytes) { offset = bytes; }
    void setVarDimsOffset(int value) { varDimsOffset = value; }
    void setSignalType(int value) { signalType = value; }
    void setSamplingMode(int value) { samplingMode = value; }
    void setDimensionsMode(int value) { dimensionsMode = value; }
    void setMin(double value) { min = value; }
    void setMax(double value) { max = value; }
    double getMin() const { return min; }
    double getMax() const { return max; }
    /// Whether a limit is specified: anything but the infinity of its side, a NaN included.
    bool getMinSpec() const;
    bool getMaxSpec() const;

    std::string name;
    int dataTypeId = INVALID_DATA_TYPE_ID; ///< -1 is "auto"
    int unitId = -1;
    int numDimensions = 0;     ///< length of `dimensions`
    int* dimensions = nullptr; ///< owned, released with utFree
    int offset = -1;           ///< bytes from the start of the struct
    int varDimsOffset = -1;    ///< offset of the variable-dimensions data
    int signalType = -1;       ///< 1 is complex
    int samplingMode = -1;     ///< 1 is frame based
    int dimensionsMode = -1;   ///< 1 is variable
    double min = -std::numeric_limits<double>::infinity();
    double max = std::numeric_limits<double>::infinity();
};

/// What the views remember of one node of the depth-first numbering.
struct TVTYPES_API DFSElementCache {
    DFSElementCache() = default;
    ~DFSElementCache();
    DFSElementCache(const DFSElementCache&) = delete;
    DFSElementCache& operator=(const DFSElementCache&) = delete;

    StructElement* element = nullptr; ///< null until it has been asked for
    bool ownsElement = false;         ///< made for this node; its dimensions are only borrowed
    int offset = -1;                  ///< -1 until it has been asked for
    int varDimsOffset = -1;           ///< the same
};

/// A type whose values are sequences of named elements. It remembers what its maker lays out:
/// elements, offsets and counts are filled in by the client, and then read through views.
///
/// What the views have read they remember here, each node once, so reading writes to the type.
/// An element or offset that changes afterwards may leave old answers; where the nodes lie is
/// found anew after a call of setNumElements or of a setter of the three counts. A struct type
/// within this one must not be replaced in its table while this one is read.
class TVTYPES_API StructDataType : public TVTypeSys::DataType {
  public:
    StructDataType(int id, const std::string& name, DataTypeSource source);
    ~StructDataType() override;

    /// The type ids of the elements, in order, duplicates and -1 kept.
    std::vector<int> dependsOn() const override;

    virtual int getNumElements() const;
    /// Makes `count` elements with nothing set in place of those before. Meant to be called once.
    virtual void setNumElements(int count);

    /// \name How many nodes the other numberings have, as the client lays them out
    /// The views trust these counts.
    ///
    /// - Depth-first: the struct itself, 1, and for each element: 1 if it is no struct, the count
    ///   of its type if it is a single one, 1 more than the counts of all for an array of structs.
    /// - Flat: the depth-first nodes that are no structs.
    /// - Raw: for each element its width, times the count of its type if that is a struct, times 2
    ///   if it is no struct and complex.
    /// @{
    virtual int getNumFlatElements() const;
    virtual void setNumFlatElements(int count);
    virtual int getNumRawElements() const;
    virtual void setNumRawElements(int count);
    virtual int getNumDFSElements() const;
    virtual void setNumDFSElements(int count);
    /// @}

    virtual const std::vector<StructElement*>& getElements() const;

    /// The depth-first index of a flat one, by the table that a flat view or the client has set;
    /// an index past the table means a further instance of the struct. Refused with
    /// TorvaneTypes::general::InvalidStructIndex (name, index) if no instance has it.
    virtual int getDFSIdxFromFlatIdx(int flatIdx) const;
    /// Sets the depth-first indices of one instance's flat ones.
    virtual void setDFSIdxFromFlatIdx(const std::vector<int>& table);

    virtual const tvChecksumValue& getDtChecksumValue() const;
    virtual void setDtChecksumValue(const tvChecksumValue& value);

    /// False; for a derived class to answer.
    virtual bool isBusType() const;

    bool isFlatElementCacheEmpty() const { return dfsIdxFromFlatIdx_.empty(); }

    /// What is remembered of a node, made if there is nothing yet. Good for the life of the type.
    DFSElementCache* getCachedElement(int dfsIdx);

    /// Whether padding is written into generated code; false until it is set.
    bool emitPaddingInCode() const { return emitPadding_ == 1; }
    void emitPaddingInCode(bool emit) { emitPadding_ = emit ? 1 : 0; }

    /// What lies in a struct, at any depth.
    struct SummaryFlags {
        bool hasFrameBasedElements = false;
        bool hasVarDims = false;     ///< an element of variable dimensions
        bool hasAOB = false;         ///< an array of structs
        bool hasComplexData = false; ///< a complex element that is no struct itself
    };

    /// \name The summary flags, all false until they have been computed
    /// @{
    bool hasFrameBasedElements() const { return summaryFlags_.hasFrameBasedElements; }
    bool hasVarDims() const { return summaryFlags_.hasVarDims; }
    bool hasAOB() const { return summaryFlags_.hasAOB; }
    bool hasComplexData() const { return summaryFlags_.hasComplexData; }
    /// @}

    /// Compute the summary flags of this type and of all struct types within it, once: elements
    /// that change afterwards change nothing. The elements' types stand in `table`. A type that
    /// contains itself is looked at once. Refused with TorvaneTypes::general::InvalidDataTypeId
    /// (id) for an element whose type is not there.
    void createCacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table);
    SummaryFlags cacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table);

  private:
    friend struct TVTypeSys::ViewMemory;
    void forgetPositions();

    int numFlatElements_ = 0;
    int numRawElements_ = 0;
    int numDFSElements_ = 0;
    std::vector<int> dfsIdxFromFlatIdx_;
    std::vector<StructElement*> elements_;
    // Keeps every element that was handed out, also those that setNumElements has replaced.
    std::vector<std::unique_ptr<StructElement>> ownedElements_;
    tvChecksumValue checksum_ = {{0, 0, 0, 0}};
    int emitPadding_ = -1;
    bool propertiesCached_ = false;
    SummaryFlags summaryFlags_;
    std::unique_ptr<TVTypeSys::ViewMemory> viewMemory_; ///< null until a view has read
};
