#include "registry/builtin_templates.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <string>

namespace TVTypeSys {

// clang-format off
#define FUNCTIONS(suffix) {ConvertBetweenBuiltinFcn, utIsPositive_##suffix, utIsNegative_##suffix, \
                           utGreaterThan_##suffix, utGreaterEqual_##suffix}

constinit const BuiltInRow builtInRows[builtInCount] = {
    // name     size atomic  mode            signed bits exp. factor bias override  functions
    {"double",  8,   false, {FXP_DT_DOUBLE,  1,     64,  0,   1.0,   0.0, 0}, FUNCTIONS(real_T)},
    {"single",  4,   false, {FXP_DT_SINGLE,  1,     32,  0,   1.0,   0.0, 0}, FUNCTIONS(real32_T)},
    {"int8",    1,   true,  {FXP_DT_FIXPT,   1,     8,   0,   1.0,   0.0, 0}, FUNCTIONS(int8_T)},
    {"uint8",   1,   true,  {FXP_DT_FIXPT,   0,     8,   0,   1.0,   0.0, 0}, FUNCTIONS(uint8_T)},
    {"int16",   2,   false, {FXP_DT_FIXPT,   1,     16,  0,   1.0,   0.0, 0}, FUNCTIONS(int16_T)},
    {"uint16",  2,   false, {FXP_DT_FIXPT,   0,     16,  0,   1.0,   0.0, 0}, FUNCTIONS(uint16_T)},
    {"int32",   4,   false, {FXP_DT_FIXPT,   1,     32,  0,   1.0,   0.0, 0}, FUNCTIONS(int32_T)},
    {"uint32",  4,   false, {FXP_DT_FIXPT,   0,     32,  0,   1.0,   0.0, 0}, FUNCTIONS(uint32_T)},
    {"boolean", 1,   true,  {FXP_DT_BOOLEAN, 0,     8,   0,   1.0,   0.0, 0}, FUNCTIONS(boolean_T)}};

#undef FUNCTIONS

constinit const PredefinedRow predefinedRows[predefinedCount] = {
    {"fcn_call",          0},
    {"integer",           4},
    {"pointer",           8},
    {"action",            8},
    {"timer_uint32_pair", 8}};
// clang-format on

namespace {

BuiltInDataType emptyTemplate() {
    return BuiltInDataType(INVALID_DATA_TYPE_ID, std::string(), DataTypeSourceBuiltIn);
}

} // namespace

BuiltInDataType BuiltInDataTypes[10] = {
    emptyTemplate(), emptyTemplate(), emptyTemplate(), emptyTemplate(), emptyTemplate(),
    emptyTemplate(), emptyTemplate(), emptyTemplate(), emptyTemplate(), emptyTemplate()};

BuiltInDataType PreDefinedDataTypes[5] = {emptyTemplate(), emptyTemplate(), emptyTemplate(),
                                          emptyTemplate(), emptyTemplate()};

AutoDataType::AutoDataType() : BuiltInDataType(AUTO_DATA_TYPE_ID, "auto", DataTypeSourceBuiltIn) {
    size_ = 8;
    idAliasedToForTesting_ = AUTO_DATA_TYPE_ID;
    // "auto" converts and compares like double.
    functions_ = builtInRows[DOUBLE_ID].functions;
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

void DataTypeTable::initializeBuiltInDataTypes() {
    static bool filled = false;
    if (filled) {
        return;
    }
    const AutoDataType automatic;
    BuiltInDataType& first = BuiltInDataTypes[0];
    first.id_ = automatic.id_;
    first.name_ = automatic.name_;
    first.source_ = automatic.source_;
    first.size_ = automatic.size_;
    first.isAtomic_ = automatic.isAtomic_;
    first.groundHasNonZeroStoredValue_ = automatic.groundHasNonZeroStoredValue_;
    first.storageId_ = automatic.storageId_;
    first.idAliasedToForTesting_ = automatic.idAliasedToForTesting_;
    first.functions_ = automatic.functions_;

    for (int id = 0; id < builtInCount; ++id) {
        const BuiltInRow& row = builtInRows[id];
        BuiltInDataType& target = BuiltInDataTypes[id + 1];
        target.size_ = row.size;
        target.isAtomic_ = row.isAtomic;
        target.groundHasNonZeroStoredValue_ = false;
        target.storageId_ = id;
        target.functions_ = row.functions;
    }
    for (int i = 0; i < predefinedCount; ++i) {
        BuiltInDataType& target = PreDefinedDataTypes[i];
        target.size_ = predefinedRows[i].size;
        target.groundHasNonZeroStoredValue_ = true;
        target.storageId_ = firstPredefinedId + i;
        target.idAliasedToForTesting_ = firstPredefinedId + i;
    }
    filled = true;
}

} // namespace TVTypeSys
