/// \file
/// Struct (bus) types. Their contents are read through the views of elementaccess.h.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/data_type.h>
#include <tvtypes/structs/struct_element.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// \addtogroup structs
/// @{

namespace TVTypeSys {
class DataTypeTable;
class ElementWalk;
class ElementCache;
class StructLookup;
} // namespace TVTypeSys

/// A checksum of four words.
struct tvChecksumValue {
    std::uint32_t words[4]; ///< the words
};

/// A type whose values are sequences of named elements. The client sets the elements, their
/// offsets, and the counts of the numberings.
///
/// The views cache elements and offsets of depth-first nodes (getCachedElement) and the table of
/// the leaves (setDFSIdxFromFlatIdx) in the type, so reading writes to it. They are never computed
/// again: after a change of an element, views return the offset and the element that were read
/// first. Everything else is read from the elements; see StructElementAccess for what a view keeps.
///
/// A type is used by one thread at a time, together with its table.
class TVTYPES_API StructDataType : public TVTypeSys::DataType {
  public:
    /// Constructs a type without elements, with the qualifier DataTypeQualifierStruct.
    StructDataType(int id, const std::string& name, DataTypeSource source);
    /// Destroys the elements.
    ~StructDataType() override;

    /// Returns the type ids of the elements, in order, with duplicates and -1.
    std::vector<int> dependsOn() const override;

    /// Returns the number of elements.
    virtual int getNumElements() const;
    /// Replaces the elements by `count` elements with default values. Elements that are replaced
    /// stay allocated until the type is destroyed, since clients may hold pointers to them.
    virtual void setNumElements(int count);

    /// \name Sizes of the numberings
    /// @{

    /// Numbers of indices of one instance in the other numberings. The client sets them, and the
    /// views rely on them:
    ///
    /// - Depth-first: 1 for the struct itself, and for each element 1 if it is not a struct, the
    ///   count of its type if it is a single struct, and 1 more than the sum over all copies if it
    ///   is an array of structs.
    /// - Flat: the depth-first nodes that are not structs.
    /// - Raw: for each element its width, times the count of its type if that is a struct, times 2
    ///   if it is complex and not a struct.
    virtual int getNumFlatElements() const;
    virtual void setNumFlatElements(int count);
    virtual int getNumRawElements() const;
    virtual void setNumRawElements(int count);
    virtual int getNumDFSElements() const;
    virtual void setNumDFSElements(int count);
    /// @}

    /// Returns the elements, which the type owns.
    virtual const std::vector<StructElement*>& getElements() const;

    /// Returns the depth-first index of a flat index, by the table that setDFSIdxFromFlatIdx has
    /// set. An index past the table belongs to a further instance of the struct. Throws
    /// TorvaneTypes::general::InvalidStructIndex (name, index) if no instance has the index.
    virtual int getDFSIdxFromFlatIdx(int flatIdx) const;
    /// Sets the depth-first indices of the flat indices of one instance.
    virtual void setDFSIdxFromFlatIdx(const std::vector<int>& table);

    /// Returns the checksum, zeros by default.
    virtual const tvChecksumValue& getDtChecksumValue() const;
    /// Sets the checksum.
    virtual void setDtChecksumValue(const tvChecksumValue& value);

    /// Returns whether the struct is a bus. Returns false unless overridden.
    virtual bool isBusType() const;

    /// Returns whether setDFSIdxFromFlatIdx has set no table, or an empty one.
    bool isFlatElementCacheEmpty() const { return dfsIdxFromFlatIdx_.empty(); }

    /// Returns the cache entry of a depth-first node, and makes an empty one if there is none. The
    /// pointer is valid until the type is destroyed. A node is cached in the type of the view and
    /// in those of the structs around it; if more than 16 structs are nested in each other there,
    /// in the type of the view and that of the innermost struct.
    DFSElementCache* getCachedElement(int dfsIdx);

    /// Returns whether generated code has padding members; false by default.
    bool emitPaddingInCode() const { return emitPadding_ == 1; }
    /// Sets whether generated code has padding members.
    void emitPaddingInCode(bool emit) { emitPadding_ = emit ? 1 : 0; }

    /// Properties of the contents of a struct, at any depth.
    struct SummaryFlags {
        bool hasFrameBasedElements = false; ///< an element is frame based
        bool hasVarDims = false;            ///< an element has variable dimensions
        bool hasAOB = false;                ///< an element is an array of structs
        bool hasComplexData = false;        ///< an element is complex and not a struct
    };

    /// \name Summary flags
    /// @{

    /// Return one of the summary flags. All are false until they are computed.
    bool hasFrameBasedElements() const { return summaryFlags_.hasFrameBasedElements; }
    bool hasVarDims() const { return summaryFlags_.hasVarDims; }
    bool hasAOB() const { return summaryFlags_.hasAOB; }
    bool hasComplexData() const { return summaryFlags_.hasComplexData; }
    /// @}

    /// Computes the summary flags of this type and of all struct types nested in it, which `table`
    /// must hold. Later calls do nothing, even if elements have changed. Each type is visited once,
    /// so a type that contains itself is accepted. Throws TorvaneTypes::general::InvalidDataTypeId
    /// (id) for an element whose type is not in the table.
    void createCacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table);
    /// Same, and returns the flags of this type.
    SummaryFlags cacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table);

  private:
    friend class TVTypeSys::ElementWalk;
    friend class TVTypeSys::ElementCache;
    friend class TVTypeSys::StructLookup;

    int numFlatElements_ = 0;
    int numRawElements_ = 0;
    int numDFSElements_ = 0;
    std::vector<int> dfsIdxFromFlatIdx_;
    std::vector<StructElement*> elements_;
    // All elements, including those that setNumElements has replaced.
    std::vector<std::unique_ptr<StructElement>> ownedElements_;
    tvChecksumValue checksum_ = {{0, 0, 0, 0}};
    int emitPadding_ = -1; // -1: not set
    bool propertiesCached_ = false;
    SummaryFlags summaryFlags_;
    std::unique_ptr<TVTypeSys::ElementCache> elementCache_; // null until a node is read
    std::uint64_t layoutVersion_; // changes with the elements and the counts
};

/// @}
