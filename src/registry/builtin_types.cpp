// The built-in and predefined types: their definitions, their records, and what DataTypeTable
// derives from the definitions.
#include "registry/builtin_types.h"

#include "services/errors.h"
#include "services/memory.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <cassert>
#include <cstring>
#include <string>
#include <string_view>

int DAGetNumTVDataTypes() { return TVTypeSys::builtInCount + TVTypeSys::predefinedCount; }

namespace TVTypeSys {

namespace {

// clang-format off
#define FUNCTIONS(suffix) {ConvertBetweenBuiltinFcn, utIsPositive_##suffix, utIsNegative_##suffix, \
                           utGreaterThan_##suffix, utGreaterEqual_##suffix}
#define PROPERTIES(mode, isSigned, bits) fxpDataTypeProp{mode, isSigned, bits, 0, 1.0, 0.0, 0}

// By id + 1. "auto" converts and compares like double.
constinit const BuiltInTypeRow rows[initialCount] = {
    // name             size atomic properties                         functions
    {"auto",              8, false, std::nullopt,                      FUNCTIONS(real_T)},
    {"double",            8, false, PROPERTIES(FXP_DT_DOUBLE, 1, 64),  FUNCTIONS(real_T)},
    {"single",            4, false, PROPERTIES(FXP_DT_SINGLE, 1, 32),  FUNCTIONS(real32_T)},
    {"int8",              1, true,  PROPERTIES(FXP_DT_FIXPT, 1, 8),    FUNCTIONS(int8_T)},
    {"uint8",             1, true,  PROPERTIES(FXP_DT_FIXPT, 0, 8),    FUNCTIONS(uint8_T)},
    {"int16",             2, false, PROPERTIES(FXP_DT_FIXPT, 1, 16),   FUNCTIONS(int16_T)},
    {"uint16",            2, false, PROPERTIES(FXP_DT_FIXPT, 0, 16),   FUNCTIONS(uint16_T)},
    {"int32",             4, false, PROPERTIES(FXP_DT_FIXPT, 1, 32),   FUNCTIONS(int32_T)},
    {"uint32",            4, false, PROPERTIES(FXP_DT_FIXPT, 0, 32),   FUNCTIONS(uint32_T)},
    {"boolean",           1, true,  PROPERTIES(FXP_DT_BOOLEAN, 0, 8),  FUNCTIONS(boolean_T)},
    {"fcn_call",          0},
    {"integer",           4},
    {"pointer",           8},
    {"action",            8},
    {"timer_uint32_pair", 8}};

#undef PROPERTIES
#undef FUNCTIONS
// clang-format on

} // namespace

const BuiltInTypeRow& builtInTypeRow(int id) {
    assert(id >= AUTO_DATA_TYPE_ID && id < initialCount - 1);
    return rows[id + 1];
}

/// Copies the fields that the row of a type and its id determine, except for the properties.
void DataType::copyBuiltInRow(int id) {
    const BuiltInTypeRow& row = builtInTypeRow(id);
    const bool isBuiltIn = id >= 0 && id < builtInCount;
    size_ = row.size;
    storageId_ = id;
    functions_ = row.functions;
    idAliasedToForTesting_ = isBuiltIn ? INVALID_DATA_TYPE_ID : id;
    if (!DataTypeTable::isPredefinedDataType(id)) {
        groundHasNonZeroStoredValue_ = !isBuiltIn;
    }
}

BuiltInDataType::BuiltInDataType(int id, const std::string& name, DataTypeSource source)
    : DataType(id, name, source) {
    qualifier_ = DataTypeQualifierBuiltIn;
}

BuiltInDataType::~BuiltInDataType() = default;

AutoDataType::AutoDataType()
    : BuiltInDataType(AUTO_DATA_TYPE_ID, builtInTypeRow(AUTO_DATA_TYPE_ID).name,
                      DataTypeSourceBuiltIn) {
    copyBuiltInRow(AUTO_DATA_TYPE_ID);
}

AutoDataType::~AutoDataType() = default;

void AutoDataType::setSize(int /*newSize*/) {}
void AutoDataType::setConvertBetweenFcn(ConvertBetweenFcn /*function*/) {}
void AutoDataType::setGreaterThanFcn(GreaterThanFcn /*function*/) {}
void AutoDataType::setGreaterEqualFcn(GreaterEqualFcn /*function*/) {}
void AutoDataType::setIsNegativeFcn(IsNegativeFcn /*function*/) {}
void AutoDataType::setIsPositiveFcn(IsPositiveFcn /*function*/) {}
void AutoDataType::setStorageId(int /*storageId*/) {}
void AutoDataType::setGround(const void* /*value*/) {}
void AutoDataType::setDefaultGround(bool /*isDefault*/) {}
void AutoDataType::setProperties(const void* /*value*/) {}
void AutoDataType::setPropertiesSize(int /*newSize*/) {}
void AutoDataType::setCGType(CG::Type* /*type*/) {}

namespace {

BuiltInDataType emptyRecord() {
    return BuiltInDataType(INVALID_DATA_TYPE_ID, std::string(), DataTypeSourceBuiltIn);
}

} // namespace

BuiltInDataType BuiltInDataTypes[10] = {emptyRecord(), emptyRecord(), emptyRecord(), emptyRecord(),
                                        emptyRecord(), emptyRecord(), emptyRecord(), emptyRecord(),
                                        emptyRecord(), emptyRecord()};

BuiltInDataType PreDefinedDataTypes[5] = {emptyRecord(), emptyRecord(), emptyRecord(),
                                          emptyRecord(), emptyRecord()};

void DataTypeTable::initializeBuiltInDataTypes() {
    // The first of several threads initialises the local variable, and the others wait for it.
    [[maybe_unused]] static const bool isFilled = [] {
        BuiltInDataTypes[0].id_ = AUTO_DATA_TYPE_ID;
        BuiltInDataTypes[0].name_ = builtInTypeRow(AUTO_DATA_TYPE_ID).name;
        for (int id = AUTO_DATA_TYPE_ID; id < initialCount - 1; ++id) {
            BuiltInDataType& record = isPredefinedDataType(id)
                                          ? PreDefinedDataTypes[id - firstPredefinedId]
                                          : BuiltInDataTypes[id + 1];
            record.copyBuiltInRow(id);
            record.isAtomic_ = builtInTypeRow(id).isAtomic;
        }
        return true;
    }();
}

void DataTypeTable::registerBuiltInDataType(DataType* dataType, int id) {
    assert(checkForBuiltInDataType(id));
    dataType->copyBuiltInRow(id);
    if (!dataType->allocateGround()) {
        throwError(general::MemoryAllocErr());
    }
    dataType->defaultGround_ = true;
    if (const std::optional<fxpDataTypeProp>& properties = builtInTypeRow(id).properties) {
        dataType->properties_.reset(allocateZeroed(sizeof *properties));
        if (dataType->properties_ == nullptr) {
            throwError(general::MemoryAllocErr());
        }
        std::memcpy(dataType->properties_.get(), &*properties, sizeof *properties);
        dataType->propertiesSize_ = sizeof *properties;
    }
    dataType->setIsAliasToLocked(true);
}

void DataTypeTable::registerInternalExtraDataType(DataType* dataType, int id) {
    assert(isPredefinedDataType(id));
    dataType->copyBuiltInRow(id);
    if (!dataType->allocateGround()) {
        throwError(general::MemoryAllocErr());
    }
    dataType->setDefaultGround(true);
    dataType->setIsAliasToLocked(true);
    dataType->setType(DataTypeQualifierPredefined);
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
        if (wanted == builtInTypeRow(id).name) {
            return id;
        }
    }
    return INVALID_DATA_TYPE_ID;
}

bool DataTypeTable::nameOfBuiltInDataType(const char* name) {
    return getBuiltInDataType(name) != INVALID_DATA_TYPE_ID;
}

const char* DataTypeTable::getNameOfBuiltInDataType(int id) {
    return id >= 0 && id < builtInCount ? builtInTypeRow(id).name : nullptr;
}

int DataTypeTable::getBuiltInDataTypeSize(int id) {
    assert(checkForBuiltInDataType(id));
    initializeBuiltInDataTypes();
    return builtInTypeRow(id).size;
}

const fxpDataTypeProp* DataTypeTable::getBuiltinDataTypeProperties(int id) {
    assert(id >= 0 && id < builtInCount);
    return &*builtInTypeRow(id).properties;
}

} // namespace TVTypeSys
