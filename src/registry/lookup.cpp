// Lookups: by name, by id, and of the built-in types without a table.
#include "registry/builtin_templates.h"
#include "registry/name_index.h"
#include "services/refuse.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <cstdio>
#include <string_view>

int DAGetNumTVDataTypes() { return TVTypeSys::builtInCount + TVTypeSys::predefinedCount; }

namespace TVTypeSys {

DataType* DataTypeTable::record(int id) const {
    // Widened before the sum: -1, "auto", wraps around to position 0.
    return dataTypes_[static_cast<std::size_t>(id) + 1].get();
}

int DataTypeTable::getDataTypeId(const char* name) const {
    const auto position = nameIndex_->find(name == nullptr ? std::string_view() : name);
    return position ? dataTypes_[*position]->getId() : INVALID_DATA_TYPE_ID;
}

int DataTypeTable::getNumDataTypes() const { return static_cast<int>(dataTypes_.size()); }

const DataType* DataTypeTable::getDataTypeAt(std::size_t position) const {
    return dataTypes_[position].get();
}

DataType* DataTypeTable::getDataTypeAt(std::size_t position) { return dataTypes_[position].get(); }

bool DataTypeTable::isDataTypeIdValid(int id) const {
    return id >= AUTO_DATA_TYPE_ID && id < getNumDataTypes() - 1;
}

bool DataTypeTable::isDataTypeIdValid_NotAuto(int id) const {
    return id >= 0 && isDataTypeIdValid(id);
}

void DataTypeTable::checkDataTypeId(int id) const {
    if (!isDataTypeIdValid(id)) {
        refuse(general::InvalidDataTypeId(id));
    }
}

bool DataTypeTable::checkForBuiltInDataType(int id) {
    return id >= AUTO_DATA_TYPE_ID && id < builtInCount;
}

bool DataTypeTable::isPredefinedDataType(int id) {
    return id >= firstPredefinedId && id < firstPredefinedId + predefinedCount;
}

int DataTypeTable::getNumBuiltInDataTypes() { return builtInCount; }

int DataTypeTable::getBuiltInDataType(const char* name) {
    const std::string_view wanted = name == nullptr ? std::string_view() : name;
    for (int id = 0; id < builtInCount; ++id) {
        if (wanted == builtInRows[id].name) {
            return id;
        }
    }
    return INVALID_DATA_TYPE_ID;
}

bool DataTypeTable::nameOfBuiltInDataType(const char* name) {
    return getBuiltInDataType(name) != INVALID_DATA_TYPE_ID;
}

const char* DataTypeTable::getNameOfBuiltInDataType(int id) {
    return id >= 0 && id < builtInCount ? builtInRows[id].name : nullptr;
}

int DataTypeTable::getBuiltInDataTypeSize(int id) {
    initializeBuiltInDataTypes();
    return BuiltInDataTypes[id + 1].getSize();
}

const fxpDataTypeProp* DataTypeTable::getBuiltinDataTypeProperties(int id) {
    return &builtInRows[id].properties;
}

const void* DataTypeTable::getDataTypeProperties(const char* /*ignored*/, int id) const {
    return getDataTypeAliasedThruTo(id)->getProperties();
}

const char* DataTypeTable::generateAnonymousTypeName() const {
    std::snprintf(anonymousTypeName_, sizeof anonymousTypeName_, "rtt_%d", anonymousTypeCount_);
    // Unsigned, so that the count wraps instead of overflowing.
    anonymousTypeCount_ = static_cast<int>(static_cast<unsigned>(anonymousTypeCount_) + 1U);
    return anonymousTypeName_;
}

} // namespace TVTypeSys
