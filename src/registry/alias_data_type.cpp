// The record of an alias: getters of the definition are forwarded, its setters throw.
#include "services/errors.h"

#include <tvtypes/registry/alias_data_type.h>

namespace TVTypeSys {

AliasDataType::AliasDataType(int id, const std::string& name, DataTypeSource source,
                             const DataType* aliasedTo, const DataType* aliasedThruTo)
    : DataType(id, name, source), aliasedToType_(aliasedTo), aliasedThruToType_(aliasedThruTo) {
    markTargets();
}

AliasDataType::AliasDataType(DataType* plainType, const DataType* aliasedTo,
                             const DataType* aliasedThruTo)
    : AliasDataType(plainType->getId(), orEmpty(plainType->getName()),
                    plainType->getDataTypeSource(), aliasedTo, aliasedThruTo) {
    DataType::setInterface(plainType->getInterface());
}

AliasDataType::~AliasDataType() = default;

int AliasDataType::getIdAliasedTo() const { return aliasedToType_->getId(); }
int AliasDataType::getIdAliasedThruTo() const { return aliasedThruToType_->getId(); }
bool AliasDataType::getIsAliasToLocked() const { return true; }
std::vector<int> AliasDataType::dependsOn() const { return {getIdAliasedTo()}; }
void AliasDataType::updateAliasedToType(DataType* type) {
    aliasedToType_ = type;
    markTargets();
}
void AliasDataType::updateAliasedThruToType(DataType* type) {
    aliasedThruToType_ = type;
    markTargets();
}

/// Marks the targets, whose replacement must update this record from now on.
void AliasDataType::markTargets() const {
    for (const DataType* target : {aliasedToType_, aliasedThruToType_}) {
        if (target != nullptr) {
            target->isAliasTarget_ = true;
        }
    }
}

// Forwarded to the type at the end of the chain.

int AliasDataType::getSize() const { return aliasedThruToType_->getSize(); }
ConvertBetweenFcn AliasDataType::getConvertBetweenFcn() const {
    return aliasedThruToType_->getConvertBetweenFcn();
}
IsPositiveFcn AliasDataType::getIsPositiveFcn() const {
    return aliasedThruToType_->getIsPositiveFcn();
}
IsNegativeFcn AliasDataType::getIsNegativeFcn() const {
    return aliasedThruToType_->getIsNegativeFcn();
}
GreaterThanFcn AliasDataType::getGreaterThanFcn() const {
    return aliasedThruToType_->getGreaterThanFcn();
}
GreaterEqualFcn AliasDataType::getGreaterEqualFcn() const {
    return aliasedThruToType_->getGreaterEqualFcn();
}
HostToTargetFcn AliasDataType::getHostToTargetFcn() const {
    return aliasedThruToType_->getHostToTargetFcn();
}
TargetToHostFcn AliasDataType::getTargetToHostFcn() const {
    return aliasedThruToType_->getTargetToHostFcn();
}
int AliasDataType::getTargetSize() const { return aliasedThruToType_->getTargetSize(); }
int AliasDataType::getStorageId() const { return aliasedThruToType_->getStorageId(); }
const void* AliasDataType::getGround() const { return aliasedThruToType_->getGround(); }
bool AliasDataType::getDefaultGround() const { return aliasedThruToType_->getDefaultGround(); }
const void* AliasDataType::getProperties() const { return aliasedThruToType_->getProperties(); }
int AliasDataType::getPropertiesSize() const { return aliasedThruToType_->getPropertiesSize(); }
bool AliasDataType::isIntDataType() const { return aliasedThruToType_->isIntDataType(); }
bool AliasDataType::isUnsignedIntDataType() const {
    return aliasedThruToType_->isUnsignedIntDataType();
}
bool AliasDataType::isSignedIntDataType() const {
    return aliasedThruToType_->isSignedIntDataType();
}
bool AliasDataType::isSignedDataType() const { return aliasedThruToType_->isSignedDataType(); }
bool AliasDataType::isAtomic() const { return aliasedThruToType_->isAtomic(); }
bool AliasDataType::groundHasNonZeroStoredValue() const {
    return aliasedThruToType_->groundHasNonZeroStoredValue();
}

// Setters of the definition, which belongs to the target.

void AliasDataType::setSize(int /*newSize*/) {
    throwError(general::CannotSetDataTypeSizeOfAlias(orEmpty(getName())));
}
void AliasDataType::setConvertBetweenFcn(ConvertBetweenFcn /*function*/) {
    throwError(general::CannotSetDataTypeConvertBetweenOfAlias(orEmpty(getName())));
}
void AliasDataType::setGreaterThanFcn(GreaterThanFcn /*function*/) {
    throwError(general::CannotSetDataTypeGreaterThanOfAlias(orEmpty(getName())));
}
void AliasDataType::setGreaterEqualFcn(GreaterEqualFcn /*function*/) {
    throwError(general::CannotSetDataTypeGreaterEqualOfAlias(orEmpty(getName())));
}
void AliasDataType::setIsNegativeFcn(IsNegativeFcn /*function*/) {
    throwError(general::CannotSetDataTypeIsNegativeOfAlias(orEmpty(getName())));
}
void AliasDataType::setIsPositiveFcn(IsPositiveFcn /*function*/) {
    throwError(general::CannotSetDataTypeIsPositiveOfAlias(orEmpty(getName())));
}
void AliasDataType::setStorageId(int /*storageId*/) {
    throwError(general::CannotSetDataTypeStorageIdOfAlias(orEmpty(getName())));
}
void AliasDataType::setGround(const void* /*value*/) {
    throwError(general::CannotSetDataTypeGroundOfAlias(orEmpty(getName())));
}
void AliasDataType::setProperties(const void* /*value*/) {
    throwError(general::CannotSetDataTypePropertiesOfAlias(orEmpty(getName())));
}
void AliasDataType::setPropertiesSize(int /*newSize*/) {
    throwError(general::CannotSetDataTypePropertiesSizeOfAlias(orEmpty(getName())));
}
void AliasDataType::setIsAtomic(bool /*isAtomic*/) {
    throwError(general::CannotSetDataTypeIsAtomicOfAlias(orEmpty(getName())));
}
void AliasDataType::setGroundHasNonZeroStoredValue(bool /*hasNonZero*/) {
    throwError(general::CannotSetDataTypeGroundHasNonZeroOfAlias(orEmpty(getName())));
}

// Ignored: callers set these on every type.

void AliasDataType::setHostToTargetFcn(HostToTargetFcn /*function*/) {}
void AliasDataType::setTargetToHostFcn(TargetToHostFcn /*function*/) {}
void AliasDataType::setTargetSize(int /*targetSize*/) {}
void AliasDataType::setDefaultGround(bool /*isDefault*/) {}
void AliasDataType::setIdAliasedTo(int /*id*/) {}
void AliasDataType::setIdAliasedThruTo(int /*id*/) {}

} // namespace TVTypeSys
