#include "model/types.h"

#include <tvtypes/fixedpoint.h>

#include <fnd/except.h>

#include <array>
#include <cstdint>
#include <string>

namespace tvtool::model {

namespace {

using fmi::BaseType;
using TVTypeSys::DataType;

constexpr auto modelSource = static_cast<DataTypeSource>(2);
constexpr int enumeratedSize = 4;
constexpr const char* enumeratedStorage = "int32";

/// The type in the table for each base type, in the order of BaseType; null outside the table. An
/// Enumeration without a declared type is known by what holds its values.
constexpr std::array<const char*, fmi::baseTypeCount> tableNames{
    "double", "single", "int8",    "uint8", "int16", "uint16", "int32",          "uint32",
    "sfix64", "ufix64", "boolean", nullptr, nullptr, nullptr,  enumeratedStorage};

const char* tableNameOf(BaseType base) {
    return base == BaseType::None ? nullptr : tableNames[static_cast<std::size_t>(base)];
}

std::unordered_set<std::string_view> declaredNames(const fmi::Description& description) {
    std::unordered_set<std::string_view> names;
    for (const fmi::TypeDefinition& type : description.types) {
        names.insert(type.name);
    }
    return names;
}

/// What `work` gives, or INVALID_DATA_TYPE_ID and a problem if the library refuses.
template <class Work>
int idUnlessRefused(const fmi::Place& place, fmi::Remarks& remarks, Work work) {
    try {
        return work();
    } catch (const fnd::except::IException& refusal) {
        remarks.problem(place, refusal.what());
        return INVALID_DATA_TYPE_ID;
    }
}

} // namespace

std::size_t positionOf(int id) { return static_cast<std::size_t>(std::int64_t{id} + 1); }

bool isOutside(BaseType base) { return base != BaseType::None && tableNameOf(base) == nullptr; }

Types::Types(const fmi::Description& description, fmi::Remarks& remarks)
    : remarks_(remarks), names_(table_, declaredNames(description)) {
    definitionIds_.reserve(description.types.size());
    for (const fmi::TypeDefinition& type : description.types) {
        definitionIds_.push_back(define(type));
    }
}

int Types::define(const fmi::TypeDefinition& type) {
    if (isOutside(type.base)) {
        return INVALID_DATA_TYPE_ID;
    }
    const std::string name = names_.nameFor(type.name);
    const bool isEnumeration = type.base == BaseType::Enumeration;
    const int target = isEnumeration ? INVALID_DATA_TYPE_ID : idOfBase(type.base, type.place);
    if (!isEnumeration && target == INVALID_DATA_TYPE_ID) {
        return INVALID_DATA_TYPE_ID;
    }
    const int id = idUnlessRefused(type.place, remarks_, [&] {
        return isEnumeration
                   ? registerEnumeration(name)
                   : table_.registerAliasDataType(name.c_str(), modelSource, target, nullptr);
    });
    if (id != INVALID_DATA_TYPE_ID) {
        setOriginalName(id, type.name);
    }
    return id;
}

int Types::registerEnumeration(const std::string& name) {
    const int id = table_.registerDataType(name.c_str(), modelSource, nullptr);
    DataType& type = *table_.getDataTypeAt(positionOf(id));
    type.setSize(enumeratedSize);
    table_.setDataTypeStorageId(id,
                                TVTypeSys::DataTypeTable::getBuiltInDataType(enumeratedStorage));
    type.setType(TVTypeSys::DataTypeQualifierEnum);
    return id;
}

int Types::idOfBase(BaseType base, const fmi::Place& place) {
    const char* const name = tableNameOf(base);
    if (name == nullptr) {
        return INVALID_DATA_TYPE_ID;
    }
    const int id = table_.getDataTypeId(name);
    if (id != INVALID_DATA_TYPE_ID) {
        return id;
    }
    return idUnlessRefused(place, remarks_, [&] { return registerFixedPoint(base); });
}

/// The built-in types end at 32 bits; wider integers are fixed-point types without a fraction.
int Types::registerFixedPoint(BaseType base) {
    const fxpDataTypeProp properties{
        FXP_DT_FIXPT, base == BaseType::Int64 ? 1U : 0U, 64, 0, 1.0, 0.0, 0};
    const int id = table_.registerDataType(tableNameOf(base), modelSource, nullptr);
    DataType& type = *table_.getDataTypeAt(positionOf(id));
    type.setSize(8);
    type.setPropertiesSize(sizeof properties);
    type.setProperties(&properties);
    return id;
}

int Types::idOf(const fmi::Variable& variable) {
    return variable.type != fmi::noIndex ? definitionIds_[variable.type]
                                         : idOfBase(variable.base, variable.place);
}

StructDataType& Types::addStruct(std::string_view name) {
    const int id =
        table_.registerStructDataType(names_.nameFor(name).c_str(), modelSource, nullptr);
    return static_cast<StructDataType&>(*table_.getDataTypeAt(positionOf(id)));
}

const std::string& Types::originalNameOf(int id) const {
    static const std::string none;
    const auto original = originalNames_.find(id);
    return original == originalNames_.end() ? none : original->second;
}

void Types::setOriginalName(int id, std::string_view name) {
    if (name != table_.getDataTypeAt(positionOf(id))->getName()) {
        originalNames_.emplace(id, name);
    }
}

} // namespace tvtool::model
