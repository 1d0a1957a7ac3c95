#include "model/base_types.h"

#include <tvtypes/fixedpoint.h>

#include <array>
#include <cstddef>

namespace tvtool::model {

namespace {

using exchange::BaseType;
using TVTypeSys::DataType;

constexpr int enumeratedSize = 4;
constexpr const char* enumeratedStorage = "int32";

/// The type in the table for each base type, in the order of BaseType; null if the table cannot
/// represent it. An Enumeration without a declared type is shown as its storage.
constexpr std::array<const char*, exchange::baseTypeCount + 1> tableNames{
    "double", "single", "int8",    "uint8", "int16", "uint16", "int32",           "uint32",
    "sfix64", "ufix64", "boolean", nullptr, nullptr, nullptr,  enumeratedStorage, nullptr};

const char* tableName(BaseType base) { return tableNames[static_cast<std::size_t>(base)]; }

/// The built-in types end at 32 bits; wider integers are fixed-point types without a fraction.
int registerFixedPoint(TVTypeSys::DataTypeTable& table, BaseType base) {
    const fxpDataTypeProp properties{
        FXP_DT_FIXPT, base == BaseType::Int64 ? 1U : 0U, 64, 0, 1.0, 0.0, 0};
    const int id = table.registerDataType(tableName(base), modelSource, nullptr);
    DataType& type = typeRecord(table, id);
    type.setSize(8);
    type.setPropertiesSize(sizeof properties);
    type.setProperties(&properties);
    return id;
}

} // namespace

bool isOutside(BaseType base) { return base != BaseType::None && tableName(base) == nullptr; }

int baseTypeId(TVTypeSys::DataTypeTable& table, BaseType base) {
    const int id = table.getDataTypeId(tableName(base));
    return id != INVALID_DATA_TYPE_ID ? id : registerFixedPoint(table, base);
}

int registerEnumeration(TVTypeSys::DataTypeTable& table, const std::string& name) {
    const int id = table.registerDataType(name.c_str(), modelSource, nullptr);
    DataType& type = typeRecord(table, id);
    type.setSize(enumeratedSize);
    table.setDataTypeStorageId(id, TVTypeSys::DataTypeTable::getBuiltInDataType(enumeratedStorage));
    type.setType(TVTypeSys::DataTypeQualifierEnum);
    return id;
}

} // namespace tvtool::model
