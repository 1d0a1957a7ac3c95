#include "model/inspection.h"

#include "model/unit_checks.h"

#include <tvtypes/structdatatype.h>

#include <array>
#include <set>
#include <utility>

namespace tvtool::model {

namespace {

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

TypeRow makeTypeRow(const Types& types, int id, std::size_t variables) {
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
    row.variables = variables;
    row.originalName = types.originalName(id);
    return row;
}

/// Returns the number of variables of each type, by id.
std::vector<std::size_t> countVariables(const Model& model) {
    std::vector<std::size_t> counts(
        static_cast<std::size_t>(model.types.table().getNumDataTypes()));
    for (const int id : model.types.variableIds()) {
        if (id != INVALID_DATA_TYPE_ID) {
            ++counts[static_cast<std::size_t>(id)];
        }
    }
    for (const Structs::Type& type : model.structs.all()) {
        counts[static_cast<std::size_t>(type.id)] = type.variables;
    }
    return counts;
}

std::vector<TypeRow> makeTypeRows(const Model& model) {
    const DataTypeTable& table = model.types.table();
    const std::vector<std::size_t> variables = countVariables(model);
    std::set<int> ids;
    for (int id = 0; id < table.getNumDataTypes() - 1; ++id) {
        const bool isRegistered =
            !DataTypeTable::checkForBuiltInDataType(id) && !DataTypeTable::isPredefinedDataType(id);
        if (isRegistered || variables[static_cast<std::size_t>(id)] > 0) {
            ids.insert(id);
        }
        if (const int target = table.getDataTypeIdAliasedTo(id); target != INVALID_DATA_TYPE_ID) {
            ids.insert(target);
        }
    }
    std::vector<TypeRow> rows;
    rows.reserve(ids.size());
    for (const int id : ids) {
        rows.push_back(makeTypeRow(model.types, id, variables[static_cast<std::size_t>(id)]));
    }
    return rows;
}

std::vector<OutsideRow> makeOutsideRows(const fmi::Description& description) {
    std::array<OutsideRow, fmi::baseTypeCount + 1> counts;
    for (const fmi::Variable& variable : description.variables) {
        ++counts[static_cast<std::size_t>(variable.base)].variables;
    }
    for (const fmi::TypeDefinition& type : description.types) {
        ++counts[static_cast<std::size_t>(type.base)].types;
    }
    std::vector<OutsideRow> rows;
    for (std::size_t i = 0; i < fmi::baseTypeCount; ++i) {
        const auto base = static_cast<fmi::BaseType>(i);
        if (isOutside(base) && (counts[i].variables > 0 || counts[i].types > 0)) {
            counts[i].baseType = fmi::baseTypeName(base, description.majorVersion);
            rows.push_back(counts[i]);
        }
    }
    return rows;
}

std::vector<UnitRow> makeUnitRows(const Model& model) {
    std::vector<UnitRow> rows;
    for (const fmi::UnitDefinition& definition : model.description->units) {
        const Units::Unit& unit = model.units.all()[rows.size()];
        UnitRow& row = rows.emplace_back();
        row.name = definition.name;
        if (unit.id != inheritedUnit) {
            row.id = unit.id;
        }
        row.expression = unit.expression;
        row.source = unit.source;
        row.baseUnits = definition.base ? baseUnitText(*definition.base) : "";
    }
    for (const fmi::Variable& variable : model.description->variables) {
        if (variable.unit != fmi::noIndex) {
            rows[variable.unit].variables.emplace_back(variable.name);
        }
    }
    return rows;
}

std::vector<DimensionRow> makeDimensionRows(const Model& model) {
    std::vector<DimensionRow> rows;
    for (const auto& [id, variables] : model.dimensions.all()) {
        DimensionRow& row = rows.emplace_back(DimensionRow{id, model.dimensions.text(id), {}});
        for (const std::uint32_t variable : variables) {
            row.variables.emplace_back(model.description->variables[variable].name);
        }
    }
    return rows;
}

} // namespace

Inspection inspect(const Model& model, std::string file) {
    const fmi::Description& description = *model.description;
    return {std::move(file),
            std::string(description.fmiVersion),
            std::string(description.modelName),
            description.variables.size(),
            makeTypeRows(model),
            makeOutsideRows(description),
            makeUnitRows(model),
            makeDimensionRows(model),
            model.dimensions.facts(),
            model.findings};
}

} // namespace tvtool::model
