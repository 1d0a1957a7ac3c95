#include "model/types.h"

#include "model/library_errors.h"

#include <tvtypes/fixedpoint.h>

#include <array>
#include <string>

namespace tvtool::model {

namespace {

using findings::Code;
using exchange::BaseType;
using TVTypeSys::DataType;

constexpr auto modelSource = static_cast<DataTypeSource>(2);
constexpr int enumeratedSize = 4;
constexpr const char* enumeratedStorage = "int32";

/// The type in the table for each base type, in the order of BaseType; null if the table cannot
/// represent it. An Enumeration without a declared type is shown as its storage.
constexpr std::array<const char*, exchange::baseTypeCount + 1> tableNames{
    "double", "single", "int8",    "uint8", "int16", "uint16", "int32",           "uint32",
    "sfix64", "ufix64", "boolean", nullptr, nullptr, nullptr,  enumeratedStorage, nullptr};

const char* tableName(BaseType base) { return tableNames[static_cast<std::size_t>(base)]; }

std::unordered_set<std::string_view> declaredNames(const fmi::Description& description) {
    std::unordered_set<std::string_view> names;
    for (const fmi::TypeDefinition& type : description.types) {
        names.insert(type.name);
    }
    return names;
}

/// Returns the id from `registerType`, or INVALID_DATA_TYPE_ID, with a finding, if it throws.
template <class Register>
int idOrProblem(const exchange::Place& place, findings::Subject subject, findings::Findings& findings,
                Register registerType) {
    try {
        return registerType();
    } catch (const fnd::except::IException& error) {
        findings.add(Code::TypeRejected, place, subject, "{}", problemText(error));
        return INVALID_DATA_TYPE_ID;
    }
}

} // namespace

bool isOutside(BaseType base) { return base != BaseType::None && tableName(base) == nullptr; }

Types::Types(const fmi::Description& description, findings::Findings& findings)
    : findings_(findings), names_(table_, declaredNames(description)) {
    std::vector<int> definitionIds;
    definitionIds.reserve(description.types.size());
    for (const fmi::TypeDefinition& type : description.types) {
        definitionIds.push_back(define(type));
    }
    variableIds_.reserve(description.variables.size());
    for (const fmi::Variable& variable : description.variables) {
        variableIds_.push_back(variable.type != exchange::noIndex
                                   ? definitionIds[variable.type]
                                   : baseTypeId(variable.base, variable.place));
    }
}

int Types::define(const fmi::TypeDefinition& type) {
    const bool isEnumeration = type.base == BaseType::Enumeration;
    const int target = baseTypeId(type.base, type.place);
    if (target == INVALID_DATA_TYPE_ID) {
        return INVALID_DATA_TYPE_ID;
    }
    const std::string name = names_.freeName(type.name);
    const int id =
        idOrProblem(type.place, {findings::SubjectKind::Type, type.name}, findings_, [&] {
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
    DataType& type = typeRecord(table_, id);
    type.setSize(enumeratedSize);
    table_.setDataTypeStorageId(id,
                                TVTypeSys::DataTypeTable::getBuiltInDataType(enumeratedStorage));
    type.setType(TVTypeSys::DataTypeQualifierEnum);
    return id;
}

int Types::baseTypeId(BaseType base, const exchange::Place& place) {
    const char* const name = tableName(base);
    if (name == nullptr) {
        return INVALID_DATA_TYPE_ID;
    }
    const int id = table_.getDataTypeId(name);
    return id != INVALID_DATA_TYPE_ID
               ? id
               : idOrProblem(place, {}, findings_, [&] { return registerFixedPoint(base); });
}

/// The built-in types end at 32 bits; wider integers are fixed-point types without a fraction.
int Types::registerFixedPoint(BaseType base) {
    const fxpDataTypeProp properties{
        FXP_DT_FIXPT, base == BaseType::Int64 ? 1U : 0U, 64, 0, 1.0, 0.0, 0};
    const int id = table_.registerDataType(tableName(base), modelSource, nullptr);
    DataType& type = typeRecord(table_, id);
    type.setSize(8);
    type.setPropertiesSize(sizeof properties);
    type.setProperties(&properties);
    return id;
}

StructDataType& Types::addStruct(std::string_view name) {
    const int id =
        table_.registerStructDataType(names_.freeName(name).c_str(), modelSource, nullptr);
    return static_cast<StructDataType&>(typeRecord(table_, id));
}

std::string Types::originalName(int id) const {
    const auto original = originalNames_.find(id);
    return original == originalNames_.end() ? "" : original->second;
}

void Types::setOriginalName(int id, std::string_view name) {
    if (name != typeRecord(table_, id).getName()) {
        originalNames_.emplace(id, name);
    }
}

} // namespace tvtool::model
