#include "report/inspection.h"

#include "model/unit_checks.h"

#include <tvtypes/structdatatype.h>

#include <array>
#include <set>
#include <unordered_map>
#include <utility>

namespace tvtool::report {

namespace {

using model::Model;
using model::typeRecord;
using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

const char* kindName(const DataTypeTable& table, int id) {
    if (DataTypeTable::checkForBuiltInDataType(id)) {
        return "built-in";
    }
    if (table.getDataTypeIdAliasedTo(id) != INVALID_DATA_TYPE_ID) {
        return "alias";
    }
    if (typeRecord(table, id).getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        return "struct";
    }
    return table.isEnumType(id) ? "enumerated" : "fixed-point";
}

TypeRow makeTypeRow(const model::Types& types, int id) {
    const DataTypeTable& table = types.table();
    const DataType& type = typeRecord(table, id);
    TypeRow row;
    row.id = id;
    row.name = type.getName();
    row.kind = kindName(table, id);
    row.size = type.getSize();
    // A type whose storage was never set has a storage id that is not that of a built-in type.
    if (DataTypeTable::checkForBuiltInDataType(type.getStorageId())) {
        row.storage = typeRecord(table, type.getStorageId()).getName();
    }
    if (type.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        row.aliasOf = typeRecord(table, type.getIdAliasedTo()).getName();
    }
    if (type.getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        const auto& structType = static_cast<const StructDataType&>(type);
        row.elements = structType.getNumElements();
        row.leaves = structType.getNumFlatElements();
    }
    row.originalName = types.originalName(id);
    return row;
}

/// Returns the variables of each type, by id, and the instances of each struct type.
std::vector<std::vector<std::uint32_t>> usersOfTypes(const Model& model) {
    std::vector<std::vector<std::uint32_t>> users(
        static_cast<std::size_t>(model.types.table().getNumDataTypes()));
    const std::vector<int>& ids = model.types.variableIds();
    for (std::uint32_t i = 0; i < ids.size(); ++i) {
        if (ids[i] != INVALID_DATA_TYPE_ID) {
            users[static_cast<std::size_t>(ids[i])].push_back(i);
        }
    }
    std::vector<std::vector<std::uint32_t>> instances = model.structs.instances();
    for (std::size_t i = 0; i < instances.size(); ++i) {
        users[static_cast<std::size_t>(model.structs.all()[i].id)] = std::move(instances[i]);
    }
    return users;
}

std::vector<TypeRow> makeTypeRows(const Model& model) {
    const DataTypeTable& table = model.types.table();
    std::vector<std::vector<std::uint32_t>> users = usersOfTypes(model);
    std::set<int> ids;
    for (int id = 0; id < table.getNumDataTypes() - 1; ++id) {
        const bool isRegistered =
            !DataTypeTable::checkForBuiltInDataType(id) && !DataTypeTable::isPredefinedDataType(id);
        if (isRegistered || !users[static_cast<std::size_t>(id)].empty()) {
            ids.insert(id);
        }
        if (const int target = table.getDataTypeIdAliasedTo(id); target != INVALID_DATA_TYPE_ID) {
            ids.insert(target);
        }
    }
    std::unordered_map<std::string_view, const fmi::TypeDefinition*> definitions;
    for (const fmi::TypeDefinition& type : model.description->types) {
        definitions.emplace(type.name, &type);
    }
    std::vector<TypeRow> rows;
    rows.reserve(ids.size());
    for (const int id : ids) {
        TypeRow& row = rows.emplace_back(makeTypeRow(model.types, id));
        row.users = std::move(users[static_cast<std::size_t>(id)]);
        const model::Structs::Type* const structType = model.structs.find(id);
        row.variables = structType == nullptr ? row.users.size() : structType->variables;
        // The other kinds are registered without a declaration.
        const std::string_view kind = row.kind;
        if (kind == "alias" || kind == "enumerated") {
            const auto definition =
                definitions.find(row.originalName.empty() ? row.name : row.originalName);
            row.definition = definition == definitions.end() ? nullptr : definition->second;
        }
    }
    return rows;
}

std::vector<OutsideRow> makeOutsideRows(const fmi::Description& description) {
    std::array<OutsideRow, exchange::baseTypeCount + 1> counts;
    for (const fmi::Variable& variable : description.variables) {
        ++counts[static_cast<std::size_t>(variable.base)].variables;
    }
    for (const fmi::TypeDefinition& type : description.types) {
        ++counts[static_cast<std::size_t>(type.base)].types;
    }
    std::vector<OutsideRow> rows;
    for (std::size_t i = 0; i < exchange::baseTypeCount; ++i) {
        const auto base = static_cast<exchange::BaseType>(i);
        if (model::isOutside(base) && (counts[i].variables > 0 || counts[i].types > 0)) {
            counts[i].baseType = exchange::baseTypeName(base, description.majorVersion);
            rows.push_back(counts[i]);
        }
    }
    return rows;
}

std::vector<UnitRow> makeUnitRows(const Model& model) {
    std::vector<UnitRow> rows;
    rows.reserve(model.description->units.size());
    for (const exchange::UnitDefinition& definition : model.description->units) {
        const model::Units::Unit& unit = model.units.all()[rows.size()];
        UnitRow& row = rows.emplace_back();
        row.definition = &definition;
        if (unit.id != model::inheritedUnit) {
            row.id = unit.id;
        }
        row.expression = unit.expression;
        row.source = unit.source;
        row.baseUnits = definition.base ? model::baseUnitText(*definition.base) : "";
    }
    const std::vector<fmi::Variable>& variables = model.description->variables;
    for (std::uint32_t i = 0; i < variables.size(); ++i) {
        if (variables[i].unit != exchange::noIndex) {
            rows[variables[i].unit].users.push_back(i);
        }
    }
    return rows;
}

std::vector<DimensionRow> makeDimensionRows(const Model& model) {
    std::vector<DimensionRow> rows;
    for (const auto& [id, variables] : model.dimensions.all()) {
        rows.push_back({id, model.dimensions.text(id), variables});
    }
    return rows;
}

} // namespace

Inspection::Inspection(const Model& inspected, std::string path, Options chosen)
    : model(inspected),
      file(std::move(path)),
      options(std::move(chosen)),
      variables(model, options),
      types(makeTypeRows(model)),
      outside(makeOutsideRows(description())),
      units(makeUnitRows(model)),
      dimensions(makeDimensionRows(model)),
      facts(model.dimensions.facts()) {}

std::string Inspection::userName(const TypeRow& type, std::uint32_t user) const {
    return type.isStruct() ? model.structs.path(user) : std::string(variableName(user));
}

} // namespace tvtool::report
