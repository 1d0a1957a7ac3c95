/// \file
/// The record of an alias.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/data_type.h>

#include <string>
#include <vector>

/// \addtogroup registry
/// @{

namespace TVTypeSys {

/// A second name for another type of the same table. It forwards the getters of the definition to
/// the type that was at the end of its chain when it was made.
///
/// Where that type has become an alias itself since then (DataTypeTable::setDataTypeIdAliasedTo),
/// the getters are forwarded once more from there, while getIdAliasedThruTo still returns its id.
///
/// Name, id, source, qualifier (always DataTypeQualifierUnspecified), checksum, interface value and
/// code generator's record are its own.
class TVTYPES_API AliasDataType : public DataType {
  public:
    /// Constructs an alias. The two targets are not owned and must outlive it.
    /// \param id            id of the alias
    /// \param name          name of the alias
    /// \param source        origin of the alias
    /// \param aliasedTo     direct target
    /// \param aliasedThruTo type to which the getters are forwarded, normally the end of the chain
    AliasDataType(int id, const std::string& name, DataTypeSource source, const DataType* aliasedTo,
                  const DataType* aliasedThruTo);
    /// Constructs an alias with the id, name and source of `plainType`; it shares the interface
    /// value.
    AliasDataType(DataType* plainType, const DataType* aliasedTo, const DataType* aliasedThruTo);
    ~AliasDataType() override;

    /// Returns the id of the direct target.
    int getIdAliasedTo() const override;
    /// Returns the id of the type to which the getters are forwarded: one step along the chain of
    /// ends, which may lead to another alias.
    int getIdAliasedThruTo() const override;

    /// \name Forwarded getters
    /// @{

    /// Return the property of the type getIdAliasedThruTo.
    int getSize() const override;
    ConvertBetweenFcn getConvertBetweenFcn() const override;
    IsPositiveFcn getIsPositiveFcn() const override;
    IsNegativeFcn getIsNegativeFcn() const override;
    GreaterThanFcn getGreaterThanFcn() const override;
    GreaterEqualFcn getGreaterEqualFcn() const override;
    HostToTargetFcn getHostToTargetFcn() const override;
    TargetToHostFcn getTargetToHostFcn() const override;
    int getTargetSize() const override;
    int getStorageId() const override;
    const void* getGround() const override;
    bool getDefaultGround() const override;
    const void* getProperties() const override;
    int getPropertiesSize() const override;
    bool isIntDataType() const override;
    bool isUnsignedIntDataType() const override;
    bool isSignedIntDataType() const override;
    bool isSignedDataType() const override;
    bool isAtomic() const override;
    bool groundHasNonZeroStoredValue() const override;
    /// @}

    /// \name Setters that throw
    /// @{

    /// Throw CannotSetDataType...OfAlias (name), where ... is Size, ConvertBetween, GreaterThan,
    /// GreaterEqual, IsNegative, IsPositive, StorageId, Ground, Properties, PropertiesSize,
    /// IsAtomic or GroundHasNonZero.
    void setSize(int newSize) override;
    void setConvertBetweenFcn(ConvertBetweenFcn function) override;
    void setGreaterThanFcn(GreaterThanFcn function) override;
    void setGreaterEqualFcn(GreaterEqualFcn function) override;
    void setIsNegativeFcn(IsNegativeFcn function) override;
    void setIsPositiveFcn(IsPositiveFcn function) override;
    void setStorageId(int storageId) override;
    void setGround(const void* value) override;
    void setProperties(const void* value) override;
    void setPropertiesSize(int newSize) override;
    void setIsAtomic(bool isAtomic) override;
    void setGroundHasNonZeroStoredValue(bool hasNonZero) override;
    /// @}

    /// \name Ignored setters
    /// @{

    /// Do nothing: callers set these on every type of a model.
    void setHostToTargetFcn(HostToTargetFcn function) override;
    void setTargetToHostFcn(TargetToHostFcn function) override;
    void setTargetSize(int targetSize) override;
    void setDefaultGround(bool isDefault) override;
    /// @}

    /// Returns the id of the direct target.
    std::vector<int> dependsOn() const override;
    /// Returns true.
    bool getIsAliasToLocked() const override;
    /// Sets the direct target.
    void updateAliasedToType(DataType* type) override;
    /// Sets the type to which the getters are forwarded.
    void updateAliasedThruToType(DataType* type) override;

    /// \name Ignored setters of targets
    /// @{

    /// Do nothing: only the table changes the targets of an alias.
    virtual void setIdAliasedTo(int id);
    virtual void setIdAliasedThruTo(int id);
    /// @}

  private:
    void markTargets() const;

    const DataType* aliasedToType_;
    const DataType* aliasedThruToType_;
};

} // namespace TVTypeSys

/// @}
