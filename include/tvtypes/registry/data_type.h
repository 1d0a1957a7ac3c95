/// \file
/// The record of one data type.
///
/// A record belongs to one DataTypeTable, which addresses it by its id. Its definition is
/// write-once: a property can be set once, and later calls must pass the same value. A type with a
/// definition can no longer become an alias.
///
/// Errors are thrown as fnd::except::IException. The message ids named here are in
/// TorvaneTypes::general; "(name)" and the like are the message arguments, where name is the name
/// of the type. A call that throws leaves the record unchanged, unless its description says
/// otherwise. Where memory for a message or a copy runs out, std::bad_alloc is thrown instead.
///
/// A record is used by the thread that uses its table. The static functions may run anywhere.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/data_type_functions.h>
#include <tvtypes/registry/type_ids.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// \addtogroup registry
/// @{

struct oxArray_tag;
enum fxpModeRounding_tag : std::int32_t;

namespace CG {
class Type;
}

namespace TVTypeSys {

class DataTypeTable;

/// Record of one data type. Every operation is virtual, and the setters read other properties
/// through the virtual getters, so that AliasDataType can forward to its target.
class TVTYPES_API DataType {
  public:
    /// Constructs a type without definition: size -1, storage id equal to `id`, and qualifier
    /// DataTypeQualifierUnspecified.
    DataType(int id, const std::string& name, DataTypeSource source);
    /// Same, moving the name.
    DataType(int id, std::string&& name, DataTypeSource source);
    /// Releases the ground value, the properties and the reference to the interface value.
    virtual ~DataType();
    DataType(const DataType&) = delete;
    DataType& operator=(const DataType&) = delete;

    /// Returns the id.
    virtual int getId() const;
    /// Returns the name. The record owns the string. A derived class may return null, which counts
    /// as "".
    virtual const char* getName() const;
    /// Returns the origin of the type.
    virtual DataTypeSource getDataTypeSource() const;

    /// Returns the size of one value in bytes, or -1 if it is not set.
    virtual int getSize() const;
    /// Sets the size of one value in bytes. A new size allocates a zeroed ground value; every call
    /// allows setGround to write once more. Only the size of `boolean` (id 8) can be changed.
    ///
    /// Throws CannotModifyDataTypeSize (name, current size) if another size is set,
    /// InvalidDataTypeSize (name, newSize) if `newSize` is negative, and MemoryAllocErr (), after
    /// which the size is set without a ground value; the next call with this size allocates it.
    virtual void setSize(int newSize);

    /// \name Lock against becoming an alias
    /// @{

    /// True if the type has a definition and cannot become an alias. Setters of the definition set
    /// it. Same flag as getIsAliasToLocked, except in an alias.
    virtual void setAliasedToLocked(bool locked);
    virtual bool getAliasedToLocked() const;
    /// @}

    /// \name Functions on values
    /// @{

    /// Return the function, or null if it is not set.
    virtual ConvertBetweenFcn getConvertBetweenFcn() const;
    virtual IsPositiveFcn getIsPositiveFcn() const;
    virtual IsNegativeFcn getIsNegativeFcn() const;
    virtual GreaterThanFcn getGreaterThanFcn() const;
    virtual GreaterEqualFcn getGreaterEqualFcn() const;
    /// @}

    /// \name Setters of functions on values
    /// @{

    /// Set a function. Null is accepted while none is set.
    ///
    /// Throw CannotSetDataType...OfAlias (name) for an alias, and InconsistentDataType...Fcn (name)
    /// if another function is set, where ... is ConvertBetween, GreaterThan, GreaterEqual,
    /// IsNegative or IsPositive.
    virtual void setConvertBetweenFcn(ConvertBetweenFcn function);
    virtual void setGreaterThanFcn(GreaterThanFcn function);
    virtual void setGreaterEqualFcn(GreaterEqualFcn function);
    virtual void setIsNegativeFcn(IsNegativeFcn function);
    virtual void setIsPositiveFcn(IsPositiveFcn function);
    /// @}

    /// Returns the id of the direct target of an alias, or -10 if the type is no alias.
    virtual int getIdAliasedTo() const;
    /// Returns the id of the type whose definition this type uses, or its own id if the type is no
    /// alias. One step along the alias chain of ends: it is the end of the chain unless that type
    /// has become an alias after this one was made.
    virtual int getIdAliasedThruTo() const;

    /// \name Representation on the target
    /// @{

    /// Return the transfer functions (null if not set) and the size of one value on the target in
    /// bytes (0 if not set).
    virtual HostToTargetFcn getHostToTargetFcn() const;
    virtual TargetToHostFcn getTargetToHostFcn() const;
    virtual int getTargetSize() const;
    /// @}

    /// \name Setters of transfer functions
    /// @{

    /// Set a transfer function. Both throw InConsistentTargetToHostFcn () if another function is
    /// set.
    virtual void setHostToTargetFcn(HostToTargetFcn function);
    virtual void setTargetToHostFcn(TargetToHostFcn function);
    /// @}
    /// Sets the size of one value on the target in bytes. Not checked.
    virtual void setTargetSize(int targetSize);

    /// Returns the id of the built-in type that stores values of this type, or the type's own id
    /// if it is not set.
    virtual int getStorageId() const;
    /// Sets the storage id without a check; DataTypeTable::setDataTypeStorageId checks it.
    virtual void setStorageId(int storageId);
    /// \name Field for tests of clients
    /// @{

    /// An id that the library initialises and does not read.
    virtual int getIdAliasedToForTesting() const;
    virtual void setIdAliasedToForTesting(int id);
    /// @}

    /// Returns the ground value, which is the byte pattern of zero: 2 * getSize() bytes, the value
    /// twice. Owned by the record; null before the size is set.
    virtual const void* getGround() const;
    /// Copies getSize() bytes into the ground value; null means zeros.
    ///
    /// Throws CannotSetDataTypeGroundOfAlias (name), CannotSetGroundRepBeforeSettingSize (name),
    /// MemoryAllocErr () if setSize failed to allocate, and
    /// CannotModifyDataTypeGroundRepresentation (name) if another value was written since the last
    /// call of setSize.
    virtual void setGround(const void* value);
    /// Returns whether the ground value may be written.
    virtual bool getDefaultGround() const;
    /// Sets whether the ground value may be written.
    virtual void setDefaultGround(bool isDefault);

    /// Returns the properties: getPropertiesSize() bytes owned by the record, or null if they are
    /// not set. Built-in and fixed-point types have a fxpDataTypeProp.
    virtual const void* getProperties() const;
    /// Copies getPropertiesSize() bytes; null means zeros.
    ///
    /// Throws CannotSetDataTypePropertiesOfAlias (name), CannotSetPropertiesBeforeSettingSize
    /// (name), CannotModifyDataTypeProperties (name) if other properties are set, and
    /// MemoryAllocErr ().
    virtual void setProperties(const void* value);
    /// Returns the size of the properties in bytes, or 0 if it is not set.
    virtual int getPropertiesSize() const;
    /// Sets the size of the properties in bytes.
    ///
    /// Throws CannotSetDataTypePropertiesSizeOfAlias (name), CannotModifyDataTypePropertiesSize
    /// (name, current size, newSize) if another size is set, and InvalidDataTypePropertiesSize
    /// (name, newSize) if `newSize` is negative.
    virtual void setPropertiesSize(int newSize);

    /// \name Record of the code generator
    /// @{

    /// Pointer to the code generator's record of this type; not owned, null by default.
    virtual CG::Type* getCGType() const;
    virtual void setCGType(CG::Type* type);
    /// @}

    /// \name Classification of this type
    /// @{

    /// Return the result of the static function of the same subject below, for the id (and the
    /// name) of this type.
    virtual bool isIntDataType() const;
    virtual bool isUnsignedIntDataType() const;
    virtual bool isSignedIntDataType() const;
    virtual bool isSignedDataType() const;
    virtual bool isSignedFixptDT() const;
    /// @}

    /// Returns the checksum: four words owned by the record, zeros by default.
    virtual const unsigned int* getChecksumElements() const;
    /// Copies four words.
    /// \pre `words` is not null.
    virtual void setChecksumElements(const unsigned int* words);

    /// Returns the host value that describes the type, or null. The record holds a reference.
    virtual const oxArray_tag* getInterface() const;
    /// Takes a reference to a host value, or to none if `value` is null, and releases the previous
    /// one.
    virtual void setInterface(const oxArray_tag* value);

    /// Returns whether the type has this qualifier.
    virtual bool getIsType(DataTypeQualifier qualifier) const;
    /// Returns the qualifier.
    virtual DataTypeQualifier getType() const;
    /// Sets the qualifier.
    virtual void setType(DataTypeQualifier qualifier);

    /// Writes name, id, size, storage id and qualifier, one line each, and an empty line.
    virtual void print(std::ostream& os) const;

    /// \name Access on the target
    /// @{

    /// Whether the target reads and writes a value in one access; false by default.
    virtual bool isAtomic() const;
    virtual void setIsAtomic(bool isAtomic);
    /// @}
    /// \name Stored form of the ground value
    /// @{

    /// Whether the stored form of the ground value has bytes other than zero; true by default.
    virtual bool groundHasNonZeroStoredValue() const;
    virtual void setGroundHasNonZeroStoredValue(bool hasNonZero);
    /// @}

    /// Returns the ids of the types that this type refers to directly.
    virtual std::vector<int> dependsOn() const;

    /// \name Visited flag
    /// @{

    /// Flag for walks over alias chains. Const lookups write it, so two of them must not run at
    /// the same time.
    virtual bool getVisitFlag() const;
    virtual void setVisitFlag(bool visited) const;
    /// @}

    /// \name Lock against becoming an alias, second form
    /// @{

    /// Same flag as getAliasedToLocked; the getter of an alias always returns true.
    virtual bool getIsAliasToLocked() const;
    virtual void setIsAliasToLocked(bool locked);
    /// @}

    /// \name Replacement of an alias target
    /// @{

    /// Called by the table when it has replaced the record of the direct target, or of the type at
    /// the end of the chain, by `type`. Do nothing unless the type is an alias.
    virtual void updateAliasedToType(DataType* type);
    virtual void updateAliasedThruToType(DataType* type);
    /// @}

    /// \name Classification by id
    /// @{

    /// Return whether the built-in type `id` is in the class; false for any other id.
    static bool isDataTypeFloatDT(int id);
    static bool isDataTypeIntDT(int id);
    static bool isDataTypeUnsignedIntDT(int id);
    static bool isDataTypeSignedIntDT(int id);
    static bool isDataTypeBoolDT(int id);
    static bool isDataTypeSignedDT(int id);
    /// @}

    /// Returns whether a type counts as signed in fixed-point arithmetic: true for every type
    /// except `boolean`, the unsigned built-in integers, and names that begin with "ufix". A null
    /// name counts as "".
    static bool isDataTypeSignedFixptDT(const char* name, int id);

    /// Returns whether a conversion between two built-in types overflows: whether any of the
    /// elements, rounded by `rounding`, is out of the range of the type `dstId`.
    ///
    /// - A conversion to `single` overflows only for a finite double that becomes infinite, in
    ///   every rounding mode.
    /// - An infinity overflows every integer type; NaN overflows none.
    /// - A conversion to `double` or `boolean`, or from `boolean`, does not overflow.
    /// - An id that is not built-in, or an invalid rounding mode, returns false.
    ///
    /// \param data      array of elements at any address, without alignment
    /// \param count     number of elements
    /// \param srcId     type of the elements
    /// \param isComplex whether an element has two parts; both are tested
    /// \param dstId     type of the result
    /// \param rounding  rounding mode of the conversion
    static bool CheckForOverflowDuringDataTypeConversion(const void* data, int count, int srcId,
                                                         bool isComplex, int dstId,
                                                         fxpModeRounding_tag rounding);

  private:
    friend class AliasDataType;
    friend class AutoDataType;
    friend class BuiltInDataType;
    friend class DataTypeTable;
    friend class NameIndex;
    friend class StructLookup;

    struct ReleaseMemory {
        void operator()(void* memory) const noexcept;
    };
    struct ReleaseValue {
        void operator()(const oxArray_tag* value) const noexcept;
    };
    using Bytes = std::unique_ptr<void, ReleaseMemory>;

    bool allocateGround();
    template <class AliasError, class ConflictError, class Function>
    void setOnce(Function& field, Function current, Function function);
    TVTYPES_LOCAL void copyBuiltInRow(int id);

    int id_;
    std::string name_;
    DataTypeSource source_;
    int size_ = -1;
    bool isAtomic_ = false;
    bool groundHasNonZeroStoredValue_ = true;
    int storageId_;
    int idAliasedToForTesting_ = INVALID_DATA_TYPE_ID;
    Bytes ground_;
    bool defaultGround_ = false;
    Bytes properties_;
    int propertiesSize_ = 0;
    CG::Type* cgType_ = nullptr;
    std::unique_ptr<const oxArray_tag, ReleaseValue> interface_;
    DataTypeFunctions functions_;
    unsigned int checksumElements_[4] = {0, 0, 0, 0};
    mutable bool visitFlag_ = false;
    DataTypeQualifier qualifier_ = DataTypeQualifierUnspecified;
    bool aliasedToLocked_ = false;
    // Whether an alias has ever pointed at this record. If not, its replacement skips the scan for
    // aliases to update.
    mutable bool isAliasTarget_ = false;
    TargetToHostFcn targetToHostFcn_ = nullptr;
    HostToTargetFcn hostToTargetFcn_ = nullptr;
    int targetSize_ = 0;
};

/// Calls DataType::print.
TVTYPES_API std::ostream& operator<<(std::ostream& os, const DataType& dataType);

} // namespace TVTypeSys

/// @}
