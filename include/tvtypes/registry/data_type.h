/// \file
/// The record of one data type of a model, and of an alias.
///
/// A record lives in one DataTypeTable and is addressed by its id. It is write-once: a property
/// can be set once and may then be set again to the same value only. A type that has been given a
/// definition of its own can no longer become an alias.
///
/// Every refusal is a fnd::except::IException whose diagnostic has the message id named here, in
/// TorvaneTypes::general, and the type's name as its first argument. A refusal stands ahead of any
/// change, but for MemoryAllocErr.
#pragma once

#include <tvtypes/export.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

struct _tvDataTypeAccess_tag;
struct ExternalSim_tag;
struct oxArray_tag;
enum fxpModeRounding_tag : std::int32_t;

namespace CG {
class Type;
}

/// Who brought a type into the table. The values 2 and 3 are the client's own.
enum DataTypeSource : std::int32_t {
    DataTypeSourceBuiltIn = 0,    ///< the table itself: "auto" and the built-in types
    DataTypeSourcePredefined = 1, ///< the table itself: the predefined types
    DataTypeSourceUnchecked = 4   ///< matches a type of any source
};

namespace TVTypeSys {

class DataTypeTable;

/// There is no such type.
inline constexpr int INVALID_DATA_TYPE_ID = -10;
/// The type "auto". 0 to 8 are the built-in types, 9 to 13 the predefined, 14 and up all others.
inline constexpr int AUTO_DATA_TYPE_ID = -1;

/// What kind of type a record is.
enum DataTypeQualifier : std::int32_t {
    DataTypeQualifierBuiltIn = 0,    ///< built-in, "auto" included
    DataTypeQualifierPredefined = 1, ///< predefined
    DataTypeQualifierFixpt = 2,      ///< fixed point or scaled double, known by its name
    DataTypeQualifierEnum = 3,       ///< enumerated
    DataTypeQualifierStruct = 4,     ///< struct (bus)
    DataTypeQualifierUnspecified = 5 ///< all else; also every alias
};

/// \name The functions of a type
/// `access` is the record by which the calling table is known, `context` is null in calls by the
/// table, `extra` is handed through unread. The status is not 0 on success, 0 on failure. `result`
/// receives a byte an element, 1 where the test holds, else 0.
/// @{
using ConvertBetweenFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dstId,
                                  int srcId, int count, const void* src, const void* extra,
                                  void* dst);
using IsPositiveFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dataTypeId,
                              int count, const void* values, const void* extra, void* result);
using IsNegativeFcn = IsPositiveFcn;
using GreaterThanFcn = int (*)(_tvDataTypeAccess_tag* access, const char* context, int dataTypeId,
                               int count, const void* lhs, const void* rhs, const void* extra,
                               void* result);
using GreaterEqualFcn = GreaterThanFcn;
using HostToTargetFcn = void (*)(ExternalSim_tag* sim, char* target, const void* host, int, int);
using TargetToHostFcn = void (*)(ExternalSim_tag* sim, void* host, const char* target, int, int);
/// @}

/// The five functions that work on the values of one type; each may be null.
struct DataTypeFunctions {
    ConvertBetweenFcn convertBetween = nullptr;
    IsPositiveFcn isPositive = nullptr;
    IsNegativeFcn isNegative = nullptr;
    GreaterThanFcn greaterThan = nullptr;
    GreaterEqualFcn greaterEqual = nullptr;
};

/// One data type. Every operation is virtual, and setters read other properties through the
/// virtual getters, so that an alias can answer for the type it stands for.
class TVTYPES_API DataType {
  public:
    /// A type with nothing set: size -1, storage id equal to its id, qualifier unspecified.
    DataType(int id, const std::string& name, DataTypeSource source);
    DataType(int id, std::string&& name, DataTypeSource source);
    virtual ~DataType();
    DataType(const DataType&) = delete;
    DataType& operator=(const DataType&) = delete;

    virtual int getId() const;
    /// The name, valid as long as the record.
    virtual const char* getName() const;
    virtual DataTypeSource getDataTypeSource() const;

    /// Bytes of one value; -1 if not set yet.
    virtual int getSize() const;
    /// Sets the size, gives the type a zeroed ground value, and opens the ground value for one
    /// write. The size of `boolean` (id 8) alone may be changed later. Refused with
    /// CannotModifyDataTypeSize (name, size now), then InvalidDataTypeSize (name, new size) for a
    /// negative size, then MemoryAllocErr.
    virtual void setSize(int newSize);

    /// Whether the type has a definition of its own and cannot become an alias. The same mark as
    /// getIsAliasToLocked.
    virtual void setAliasedToLocked(bool locked);
    virtual bool getAliasedToLocked() const;

    virtual ConvertBetweenFcn getConvertBetweenFcn() const;
    virtual IsPositiveFcn getIsPositiveFcn() const;
    virtual IsNegativeFcn getIsNegativeFcn() const;
    virtual GreaterThanFcn getGreaterThanFcn() const;
    virtual GreaterEqualFcn getGreaterEqualFcn() const;

    /// Sets a function of the type once. Refused with CannotSetDataType...OfAlias (name) for an
    /// alias, and with InconsistentDataType...Fcn (name) where another function is set.
    virtual void setConvertBetweenFcn(ConvertBetweenFcn function);
    virtual void setGreaterThanFcn(GreaterThanFcn function);
    virtual void setGreaterEqualFcn(GreaterEqualFcn function);
    virtual void setIsNegativeFcn(IsNegativeFcn function);
    virtual void setIsPositiveFcn(IsPositiveFcn function);

    /// The id of the type that this one is an alias of; -10 for a type that is no alias.
    virtual int getIdAliasedTo() const;
    /// The id of the type that answers for this one; its own id for a type that is no alias.
    virtual int getIdAliasedThruTo() const;

    virtual HostToTargetFcn getHostToTargetFcn() const;
    virtual TargetToHostFcn getTargetToHostFcn() const;
    /// Size of a value on the target, in bytes.
    virtual int getTargetSize() const;
    /// Sets a function once. Refused with InConsistentTargetToHostFcn where another one is set.
    virtual void setHostToTargetFcn(HostToTargetFcn function);
    virtual void setTargetToHostFcn(TargetToHostFcn function);
    virtual void setTargetSize(int targetSize);

    /// The built-in type that holds values of this type; the type's own id means not set yet.
    virtual int getStorageId() const;
    /// A plain store. DataTypeTable::setDataTypeStorageId is the operation that checks.
    virtual void setStorageId(int storageId);
    virtual int getIdAliasedToForTesting() const;
    virtual void setIdAliasedToForTesting(int id);

    /// The byte pattern that stands for zero: 2 * getSize() bytes, the value twice. Owned by the
    /// record; null before the size is set.
    virtual const void* getGround() const;
    /// Copies getSize() bytes; null stands for zeros. Refused with CannotSetDataTypeGroundOfAlias,
    /// CannotSetGroundRepBeforeSettingSize or, where another value was written since the size was
    /// last set, CannotModifyDataTypeGroundRepresentation (all: name).
    virtual void setGround(const void* value);
    /// Whether the ground value holds its initial zeros still and may be written.
    virtual bool getDefaultGround() const;
    virtual void setDefaultGround(bool isDefault);

    /// The type's properties: getPropertiesSize() bytes, owned by the record, or null. For
    /// built-in and fixed-point types a fxpDataTypeProp.
    virtual const void* getProperties() const;
    /// Copies getPropertiesSize() bytes; null stands for zeros. Refused with
    /// CannotSetDataTypePropertiesOfAlias, CannotSetPropertiesBeforeSettingSize or, where others
    /// are set, CannotModifyDataTypeProperties (all: name), then MemoryAllocErr.
    virtual void setProperties(const void* value);
    /// Bytes of the properties; 0 if not set yet.
    virtual int getPropertiesSize() const;
    /// Refused with CannotSetDataTypePropertiesSizeOfAlias (name), then
    /// CannotModifyDataTypePropertiesSize (name, size now, new size), then
    /// InvalidDataTypePropertiesSize (name, new size) for a negative size.
    virtual void setPropertiesSize(int newSize);

    /// Code generation's record of this type; not owned.
    virtual CG::Type* getCGType() const;
    virtual void setCGType(CG::Type* type);

    /// \name Classification by id (and name), as the static forms below
    /// @{
    virtual bool isIntDataType() const;
    virtual bool isUnsignedIntDataType() const;
    virtual bool isSignedIntDataType() const;
    virtual bool isSignedDataType() const;
    virtual bool isSignedFixptDT() const;
    /// @}

    /// The type's checksum: four words. The setter copies them.
    virtual const unsigned int* getChecksumElements() const;
    virtual void setChecksumElements(const unsigned int* words);

    /// The host value that describes the type, or null. The record shares it with its maker.
    virtual const oxArray_tag* getInterface() const;
    virtual void setInterface(const oxArray_tag* value);

    virtual bool getIsType(DataTypeQualifier qualifier) const;
    virtual DataTypeQualifier getType() const;
    virtual void setType(DataTypeQualifier qualifier);

    /// Writes name, id, size, storage id and qualifier, a line each, and an empty line.
    virtual void print(std::ostream& os) const;

    /// Whether the target reads and writes values of this type in one access.
    virtual bool isAtomic() const;
    virtual void setIsAtomic(bool isAtomic);
    /// Whether the stored form of the ground value is other than zero bytes.
    virtual bool groundHasNonZeroStoredValue() const;
    virtual void setGroundHasNonZeroStoredValue(bool hasNonZero);

    /// The ids of the types on which this one depends.
    virtual std::vector<int> dependsOn() const;

    /// A mark for walks over aliases. Constant walks write it too, so none may run beside another.
    virtual bool getVisitFlag() const;
    virtual void setVisitFlag(bool visited) const;

    virtual bool getIsAliasToLocked() const;
    virtual void setIsAliasToLocked(bool locked);

    /// Called by the table when a record that this one may refer to has been replaced.
    virtual void updateAliasedToType(DataType* type);
    virtual void updateAliasedThruToType(DataType* type);

    /// \name Classification by id alone; an id that is not built-in gives false
    /// @{
    static bool isDataTypeFloatDT(int id);
    static bool isDataTypeIntDT(int id);
    static bool isDataTypeUnsignedIntDT(int id);
    static bool isDataTypeSignedIntDT(int id);
    static bool isDataTypeBoolDT(int id);
    static bool isDataTypeSignedDT(int id);
    /// @}

    /// Whether a type counts as signed in the fixed-point world: all but `boolean`, the unsigned
    /// built-in integers, and names that begin with "ufix". A null name counts as "".
    static bool isDataTypeSignedFixptDT(const char* name, int id);

    /// Whether a conversion between built-in types would overflow: whether any of `count` elements,
    /// rounded in this mode, falls out of the range of the type `dstId`. Both parts of complex
    /// elements count. `data` may lie at any address.
    ///
    /// To single only a finite double that would become infinite overflows, whatever the mode. An
    /// infinity overflows every integer type, NaN none. Nothing overflows `double` and `boolean`,
    /// nothing comes from `boolean`, and for an id that is not built-in and a mode that is none the
    /// answer is false.
    static bool CheckForOverflowDuringDataTypeConversion(const void* data, int count, int srcId,
                                                         bool isComplex, int dstId,
                                                         fxpModeRounding_tag rounding);

  private:
    friend class AliasDataType;
    friend class AutoDataType;
    friend class BuiltInDataType;
    friend class DataTypeTable;
    friend class NameIndex;

    struct ReleaseMemory {
        void operator()(void* memory) const noexcept;
    };
    struct ReleaseValue {
        void operator()(const oxArray_tag* value) const noexcept;
    };
    using Bytes = std::unique_ptr<void, ReleaseMemory>;

    bool allocateGround();
    template <class Refusal, class Conflict, class Function>
    void setOnce(Function& field, Function current, Function function);

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
    // Whether an alias has ever pointed at this record: if not, none needs to be told of its end.
    mutable bool isAliasTarget_ = false;
    TargetToHostFcn targetToHostFcn_ = nullptr;
    HostToTargetFcn hostToTargetFcn_ = nullptr;
    int targetSize_ = 0;
};

/// The record of a built-in or predefined type.
class TVTYPES_API BuiltInDataType : public DataType {
  public:
    /// As DataType, with the qualifier of a built-in type.
    BuiltInDataType(int id, const std::string& name, DataTypeSource source);
    ~BuiltInDataType() override;
};

/// The record of the type "auto". It is complete from birth: setters of its definition do nothing.
class TVTYPES_API AutoDataType : public BuiltInDataType {
  public:
    AutoDataType();
    ~AutoDataType() override;

    void setSize(int newSize) override;
    void setConvertBetweenFcn(ConvertBetweenFcn function) override;
    void setGreaterThanFcn(GreaterThanFcn function) override;
    void setGreaterEqualFcn(GreaterEqualFcn function) override;
    void setIsNegativeFcn(IsNegativeFcn function) override;
    void setIsPositiveFcn(IsPositiveFcn function) override;
    void setStorageId(int storageId) override;
    void setGround(const void* value) override;
    void setDefaultGround(bool isDefault) override;
    void setProperties(const void* value) override;
    void setPropertiesSize(int newSize) override;
    void setCGType(CG::Type* type) override;
};

/// A type that stands for another one of the same table, and answers with that one's definition.
///
/// Size, functions, ground, properties, storage, target size and atomicity are read from the type
/// that answers for it, in one call however long the chain of aliases is. Name, id, source,
/// qualifier (always unspecified), checksum, interface and code-generation type are its own.
///
/// Setting a definition through an alias is refused with CannotSetDataType...OfAlias (name);
/// setting target functions, target size or the mark of the default ground does nothing.
class TVTYPES_API AliasDataType : public DataType {
  public:
    /// \param aliasedTo     the type named as the target; not owned
    /// \param aliasedThruTo the type that answers, normally the end of the chain; not owned
    AliasDataType(int id, const std::string& name, DataTypeSource source, const DataType* aliasedTo,
                  const DataType* aliasedThruTo);
    /// Takes id, name and source from a plain type, and shares its interface value.
    AliasDataType(DataType* plainType, const DataType* aliasedTo, const DataType* aliasedThruTo);
    ~AliasDataType() override;

    int getSize() const override;
    void setSize(int newSize) override;
    ConvertBetweenFcn getConvertBetweenFcn() const override;
    IsPositiveFcn getIsPositiveFcn() const override;
    IsNegativeFcn getIsNegativeFcn() const override;
    GreaterThanFcn getGreaterThanFcn() const override;
    GreaterEqualFcn getGreaterEqualFcn() const override;
    void setConvertBetweenFcn(ConvertBetweenFcn function) override;
    void setGreaterThanFcn(GreaterThanFcn function) override;
    void setGreaterEqualFcn(GreaterEqualFcn function) override;
    void setIsNegativeFcn(IsNegativeFcn function) override;
    void setIsPositiveFcn(IsPositiveFcn function) override;
    int getIdAliasedTo() const override;
    int getIdAliasedThruTo() const override;
    HostToTargetFcn getHostToTargetFcn() const override;
    TargetToHostFcn getTargetToHostFcn() const override;
    int getTargetSize() const override;
    void setHostToTargetFcn(HostToTargetFcn function) override;
    void setTargetToHostFcn(TargetToHostFcn function) override;
    void setTargetSize(int targetSize) override;
    int getStorageId() const override;
    void setStorageId(int storageId) override;
    const void* getGround() const override;
    void setGround(const void* value) override;
    bool getDefaultGround() const override;
    void setDefaultGround(bool isDefault) override;
    const void* getProperties() const override;
    void setProperties(const void* value) override;
    int getPropertiesSize() const override;
    void setPropertiesSize(int newSize) override;
    bool isIntDataType() const override;
    bool isUnsignedIntDataType() const override;
    bool isSignedIntDataType() const override;
    bool isSignedDataType() const override;
    bool isAtomic() const override;
    void setIsAtomic(bool isAtomic) override;
    bool groundHasNonZeroStoredValue() const override;
    void setGroundHasNonZeroStoredValue(bool hasNonZero) override;
    /// The one id of getIdAliasedTo.
    std::vector<int> dependsOn() const override;
    /// Always true.
    bool getIsAliasToLocked() const override;
    void updateAliasedToType(DataType* type) override;
    void updateAliasedThruToType(DataType* type) override;

    /// Do nothing: what an alias stands for is changed by its table alone.
    virtual void setIdAliasedTo(int id);
    virtual void setIdAliasedThruTo(int id);

  private:
    void markTargets() const;

    const DataType* aliasedToType_;
    const DataType* aliasedThruToType_;
};

/// Writes the type through its virtual print.
TVTYPES_API std::ostream& operator<<(std::ostream& os, const DataType& dataType);

} // namespace TVTypeSys

using TVTypeSys::AUTO_DATA_TYPE_ID;
using TVTypeSys::INVALID_DATA_TYPE_ID;
