// The record of a data type: construction, plain properties and classification.
#include "registry/builtin_types.h"
#include "services/memory.h"

#include <tvtypes/registry/data_type.h>

#include <cstring>
#include <ostream>
#include <string_view>
#include <utility>

namespace TVTypeSys {

void DataType::ReleaseMemory::operator()(void* memory) const noexcept { releaseMemory(memory); }

void DataType::ReleaseValue::operator()(const oxArray_tag* value) const noexcept {
    releaseValue(value);
}

DataType::DataType(int id, const std::string& name, DataTypeSource source)
    : DataType(id, std::string(name), source) {}

DataType::DataType(int id, std::string&& name, DataTypeSource source)
    : id_(id), name_(std::move(name)), source_(source), storageId_(id) {}

DataType::~DataType() {
    properties_.reset();
    ground_.reset();
    interface_.reset();
}

int DataType::getId() const { return id_; }

const char* DataType::getName() const { return name_.c_str(); }

DataTypeSource DataType::getDataTypeSource() const { return source_; }

int DataType::getSize() const { return size_; }

void DataType::setAliasedToLocked(bool locked) { aliasedToLocked_ = locked; }

bool DataType::getAliasedToLocked() const { return aliasedToLocked_; }

void DataType::setIsAliasToLocked(bool locked) { aliasedToLocked_ = locked; }

bool DataType::getIsAliasToLocked() const { return aliasedToLocked_; }

int DataType::getIdAliasedTo() const { return INVALID_DATA_TYPE_ID; }

int DataType::getIdAliasedThruTo() const { return getId(); }

void DataType::updateAliasedToType(DataType* /*type*/) {}

void DataType::updateAliasedThruToType(DataType* /*type*/) {}

int DataType::getTargetSize() const { return targetSize_; }

void DataType::setTargetSize(int targetSize) { targetSize_ = targetSize; }

int DataType::getStorageId() const { return storageId_; }

void DataType::setStorageId(int storageId) { storageId_ = storageId; }

int DataType::getIdAliasedToForTesting() const { return idAliasedToForTesting_; }

void DataType::setIdAliasedToForTesting(int id) { idAliasedToForTesting_ = id; }

const void* DataType::getGround() const { return ground_.get(); }

bool DataType::getDefaultGround() const { return defaultGround_; }

void DataType::setDefaultGround(bool isDefault) { defaultGround_ = isDefault; }

const void* DataType::getProperties() const { return properties_.get(); }

int DataType::getPropertiesSize() const { return propertiesSize_; }

CG::Type* DataType::getCGType() const { return cgType_; }

void DataType::setCGType(CG::Type* type) { cgType_ = type; }

const unsigned int* DataType::getChecksumElements() const { return checksumElements_; }

void DataType::setChecksumElements(const unsigned int* words) {
    std::memmove(checksumElements_, words, sizeof checksumElements_);
}

const oxArray_tag* DataType::getInterface() const { return interface_.get(); }

void DataType::setInterface(const oxArray_tag* value) {
    // Takes the new reference first: the value may be the same one, and this its only reference.
    interface_.reset(share(value));
}

bool DataType::getIsType(DataTypeQualifier qualifier) const { return qualifier_ == qualifier; }

DataTypeQualifier DataType::getType() const { return qualifier_; }

void DataType::setType(DataTypeQualifier qualifier) { qualifier_ = qualifier; }

bool DataType::isAtomic() const { return isAtomic_; }

void DataType::setIsAtomic(bool isAtomic) { isAtomic_ = isAtomic; }

bool DataType::groundHasNonZeroStoredValue() const { return groundHasNonZeroStoredValue_; }

void DataType::setGroundHasNonZeroStoredValue(bool hasNonZero) {
    groundHasNonZeroStoredValue_ = hasNonZero;
}

std::vector<int> DataType::dependsOn() const { return {}; }

bool DataType::getVisitFlag() const { return visitFlag_; }

void DataType::setVisitFlag(bool visited) const { visitFlag_ = visited; }

bool DataType::isIntDataType() const { return isDataTypeIntDT(getId()); }

bool DataType::isUnsignedIntDataType() const { return isDataTypeUnsignedIntDT(getId()); }

bool DataType::isSignedIntDataType() const { return isDataTypeSignedIntDT(getId()); }

bool DataType::isSignedDataType() const { return isDataTypeSignedDT(getId()); }

bool DataType::isSignedFixptDT() const { return isDataTypeSignedFixptDT(getName(), getId()); }

bool DataType::isDataTypeFloatDT(int id) { return id == DoubleId || id == SingleId; }

bool DataType::isDataTypeIntDT(int id) {
    return isDataTypeSignedIntDT(id) || isDataTypeUnsignedIntDT(id);
}

bool DataType::isDataTypeUnsignedIntDT(int id) {
    return id == UInt8Id || id == UInt16Id || id == UInt32Id;
}

bool DataType::isDataTypeSignedIntDT(int id) {
    return id == Int8Id || id == Int16Id || id == Int32Id;
}

bool DataType::isDataTypeBoolDT(int id) { return id == BooleanId; }

bool DataType::isDataTypeSignedDT(int id) {
    return isDataTypeFloatDT(id) || isDataTypeSignedIntDT(id);
}

bool DataType::isDataTypeSignedFixptDT(const char* name, int id) {
    const std::string_view text = name == nullptr ? std::string_view() : name;
    return !text.starts_with("ufix") && !isDataTypeUnsignedIntDT(id) && !isDataTypeBoolDT(id);
}

} // namespace TVTypeSys
