#include "model/type_rows.h"

#include <tvtypes/structdatatype.h>

#include <array>
#include <set>

namespace tvtool::model {

using output::none;

const output::Columns<TypeRow> typeColumns{
    {"id", "id", &TypeRow::id},
    {"name", "name", &TypeRow::name},
    {"kind", "kind", &TypeRow::kind},
    {"size", "size", &TypeRow::size},
    {"storage", "storage", &TypeRow::storage},
    {"alias of", "aliasOf", &TypeRow::aliasOf},
    {"variables", "variables", &TypeRow::variables},
    {none, "originalName", &TypeRow::originalName},
    output::Column<TypeRow>("elements", "elements", &TypeRow::elements).ifAny(),
    output::Column<TypeRow>("leaves", "leaves", &TypeRow::leaves).ifAny(),
    output::Column<TypeRow>("original name", none, &TypeRow::originalName).ifAny(),
};

const output::Columns<OutsideRow> outsideColumns{
    {none, "baseType", &OutsideRow::baseType},
    {none, "variables", &OutsideRow::variables},
    {none, "types", &OutsideRow::types},
};

namespace {

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

const DataType& typeWithId(const DataTypeTable& table, int id) {
    return *table.getDataTypeAt(positionOf(id));
}

const char* kindOf(const DataTypeTable& table, int id) {
    if (DataTypeTable::checkForBuiltInDataType(id)) {
        return "built-in";
    }
    if (table.getDataTypeIdAliasedTo(id) != INVALID_DATA_TYPE_ID) {
        return "alias";
    }
    if (typeWithId(table, id).getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        return "struct";
    }
    return table.isEnumType(id) ? "enumerated" : "fixed-point";
}

TypeRow typeRow(const Types& types, int id, std::size_t variables) {
    const DataTypeTable& table = types.table();
    const DataType& type = typeWithId(table, id);
    TypeRow row;
    row.id = id;
    row.name = type.getName();
    row.kind = kindOf(table, id);
    row.size = type.getSize();
    // The storage id of a type whose storage was never set is not that of a built-in type.
    if (DataTypeTable::checkForBuiltInDataType(type.getStorageId())) {
        row.storage = typeWithId(table, type.getStorageId()).getName();
    }
    if (type.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        row.aliasOf = typeWithId(table, type.getIdAliasedTo()).getName();
    }
    if (type.getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        const auto& structType = static_cast<const StructDataType&>(type);
        row.elements = structType.getNumElements();
        row.leaves = structType.getNumFlatElements();
    }
    row.variables = variables;
    row.originalName = types.originalNameOf(id);
    return row;
}

/// The number of variables of each type, by position in the table.
std::vector<std::size_t> countVariables(const Model& model) {
    std::vector<std::size_t> counts(
        static_cast<std::size_t>(model.types.table().getNumDataTypes()));
    for (const int id : model.variableIds) {
        if (id != INVALID_DATA_TYPE_ID) {
            ++counts[positionOf(id)];
        }
    }
    for (const Structs::Type& type : model.structs.all()) {
        counts[positionOf(type.id)] = type.variables;
    }
    return counts;
}

} // namespace

std::vector<TypeRow> typeRows(const Model& model) {
    const DataTypeTable& table = model.types.table();
    const std::vector<std::size_t> variables = countVariables(model);
    std::set<int> ids;
    for (int id = 0; id < table.getNumDataTypes() - 1; ++id) {
        const bool isRegistered =
            !DataTypeTable::checkForBuiltInDataType(id) && !DataTypeTable::isPredefinedDataType(id);
        if (isRegistered || variables[positionOf(id)] > 0) {
            ids.insert(id);
        }
        if (const int target = table.getDataTypeIdAliasedTo(id); target != INVALID_DATA_TYPE_ID) {
            ids.insert(target);
        }
    }
    std::vector<TypeRow> rows;
    rows.reserve(ids.size());
    for (const int id : ids) {
        rows.push_back(typeRow(model.types, id, variables[positionOf(id)]));
    }
    return rows;
}

std::vector<OutsideRow> outsideRows(const fmi::Description& description) {
    struct Count {
        std::size_t variables = 0;
        std::size_t types = 0;
    };
    std::array<Count, fmi::baseTypeCount + 1> counts{};
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
            rows.push_back({std::string(fmi::nameOf(base, description.majorVersion)),
                            counts[i].variables, counts[i].types});
        }
    }
    return rows;
}

} // namespace tvtool::model
