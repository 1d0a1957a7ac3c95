// The record of an alias: what it forwards, what it answers itself, and what it refuses.
#include "services/refuse.h"

#include <tvtypes/datatype.h>

namespace TVTypeSys {

AliasDataType::AliasDataType(int id, const std::string& name, DataTypeSource source,
                             const DataType* aliasedTo, const DataType* aliasedThruTo)
    : DataType(id, name, source), aliasedToType_(aliasedTo), aliasedThruToType_(aliasedThruTo) {
    markTargets();
}

AliasDataType::AliasDataType(DataType* plainType, const DataType* aliasedTo,
                             const DataType* aliasedThruTo)
    : AliasDataType(plainType->getId(), textOf(plainType->getName()),
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

void AliasDataType::markTargets() const {
    for (const DataType* target : {aliasedToType_, aliasedThruToType_}) {
        if (target != nullptr) {
            target->isAliasTarget_ = true;
        }
    }
}

// Answered by the type at the end of the chain.

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

// Refused: the definition belongs to the type that is stood for.

void AliasDataType::setSize(int /*newSize*/) {
    refuse(general::CannotSetDataTypeSizeOfAlias(textOf(getName())));
}
void AliasDataType::setConvertBetweenFcn(ConvertBetweenFcn /*function*/) {
    refuse(general::CannotSetDataTypeConvertBetweenOfAlias(textOf(getName())));
}
void AliasDataType::setGreaterThanFcn(GreaterThanFcn /*function*/) {
    refuse(general::CannotSetDataTypeGreaterThanOfAlias(textOf(getName())));
}
void AliasDataType::setGreaterEqualFcn(GreaterEqualFcn /*function*/) {
    refuse(general::CannotSetDataTypeGreaterEqualOfAlias(textOf(getName())));
}
void AliasDataType::setIsNegativeFcn(IsNegativeFcn /*function*/) {
    refuse(general::CannotSetDataTypeIsNegativeOfAlias(textOf(getName())));
}
void AliasDataType::setIsPositiveFcn(IsPositiveFcn /*function*/) {
    refuse(general::CannotSetDataTypeIsPositiveOfAlias(textOf(getName())));
}
void AliasDataType::setStorageId(int /*storageId*/) {
    refuse(general::CannotSetDataTypeStorageIdOfAlias(textOf(getName())));
}
void AliasDataType::setGround(const void* /*value*/) {
    refuse(general::CannotSetDataTypeGroundOfAlias(textOf(getName())));
}
void AliasDataType::setProperties(const void* /*value*/) {
    refuse(general::CannotSetDataTypePropertiesOfAlias(textOf(getName())));
}
void AliasDataType::setPropertiesSize(int /*newSize*/) {
    refuse(general::CannotSetDataTypePropertiesSizeOfAlias(textOf(getName())));
}
void AliasDataType::setIsAtomic(bool /*isAtomic*/) {
    refuse(general::CannotSetDataTypeIsAtomicOfAlias(textOf(getName())));
}
void AliasDataType::setGroundHasNonZeroStoredValue(bool /*hasNonZero*/) {
    refuse(general::CannotSetDataTypeGroundHasNonZeroOfAlias(textOf(getName())));
}

// Dropped without a word: these are written to every type of a model, whatever it is.

void AliasDataType::setHostToTargetFcn(HostToTargetFcn /*function*/) {}
void AliasDataType::setTargetToHostFcn(TargetToHostFcn /*function*/) {}
void AliasDataType::setTargetSize(int /*targetSize*/) {}
void AliasDataType::setDefaultGround(bool /*isDefault*/) {}
void AliasDataType::setIdAliasedTo(int /*id*/) {}
void AliasDataType::setIdAliasedThruTo(int /*id*/) {}

} // namespace TVTypeSys
