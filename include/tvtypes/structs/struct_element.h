/// \file
/// Elements of struct types.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/type_ids.h>

#include <limits>
#include <string>

/// \addtogroup structs
/// @{

/// One element of a struct. The fields are public, and the setters store without a check.
class TVTYPES_API StructElement {
  public:
    /// Constructs an element with the defaults of the fields.
    StructElement();
    /// Releases the dimensions with utFree.
    ~StructElement();
    StructElement(const StructElement&) = delete;
    StructElement& operator=(const StructElement&) = delete;

    /// \name Setters
    /// @{

    /// Store one field. Null as a name counts as "". The element takes ownership of `sizes`, which
    /// must come from utCalloc or utMalloc; dimensions that were set before are not released.
    void setName(const char* newName);
    void setDataTypeId(int id) { dataTypeId = id; }
    void setUnitId(int id) { unitId = id; }
    void setNumDimensions(int count) { numDimensions = count; }
    void setDimensions(int* sizes) { dimensions = sizes; }
    void setOffset(int bytes) { offset = bytes; }
    void setVarDimsOffset(int value) { varDimsOffset = value; }
    void setSignalType(int value) { signalType = value; }
    void setSamplingMode(int value) { samplingMode = value; }
    void setDimensionsMode(int value) { dimensionsMode = value; }
    void setMin(double value) { min = value; }
    void setMax(double value) { max = value; }
    /// @}

    /// \name Limits
    /// @{

    /// Return the limits, in the unit of the element.
    double getMin() const { return min; }
    double getMax() const { return max; }
    /// @}

    /// \name Specified limits
    /// @{

    /// Return whether the limit is specified: any value, NaN included, except -infinity for the
    /// lower and +infinity for the upper limit.
    bool getMinSpec() const;
    bool getMaxSpec() const;
    /// @}

    std::string name;                      ///< name within the struct
    int dataTypeId = INVALID_DATA_TYPE_ID; ///< type of the element; -1 is "auto"
    int unitId = -1;                       ///< unit of the element
    int numDimensions = 0;                 ///< length of `dimensions`
    int* dimensions = nullptr;             ///< owned, released with utFree
    int offset = -1;                       ///< bytes from the start of the struct
    int varDimsOffset = -1;                ///< offset of the variable-dimensions data
    int signalType = -1;                   ///< 1 is complex
    int samplingMode = -1;                 ///< 1 is frame based
    int dimensionsMode = -1;               ///< 1 is variable
    double min = -std::numeric_limits<double>::infinity(); ///< lower limit, in the element's unit
    double max = std::numeric_limits<double>::infinity();  ///< upper limit, in the element's unit
};

/// Cached values of one node of the depth-first numbering.
struct TVTYPES_API DFSElementCache {
    /// Constructs an empty cache entry.
    DFSElementCache() = default;
    /// Destroys the element if it is owned, without its dimensions, which are borrowed.
    ~DFSElementCache();
    DFSElementCache(const DFSElementCache&) = delete;
    DFSElementCache& operator=(const DFSElementCache&) = delete;

    StructElement* element = nullptr; ///< element of the node; null until the first read
    bool ownsElement = false;         ///< true if `element` was made for this node
    int offset = -1;                  ///< in bytes; -1 until the first read
    int varDimsOffset = -1;           ///< -1 until the first read
};

/// @}
