#include "model/inspection.h"

#include "model/model.h"
#include "model/unit_checks.h"

#include <tvtypes/structdatatype.h>

#include <array>
#include <memory>
#include <set>
#include <utility>

namespace tvtool::model {

namespace {

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

model::Kind kindOf(const DataTypeTable& table, int id) {
    if (DataTypeTable::checkForBuiltInDataType(id)) {
        return model::Kind::BuiltIn;
    }
    if (table.getDataTypeIdAliasedTo(id) != INVALID_DATA_TYPE_ID) {
        return model::Kind::Alias;
    }
    if (table.getDataTypeAt(positionOf(id))->getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        return model::Kind::Struct;
    }
    return table.isEnumType(id) ? model::Kind::Enumerated : model::Kind::FixedPoint;
}

std::string nameOf(const DataTypeTable& table, int id) {
    return table.getDataTypeAt(positionOf(id))->getName();
}

model::TypeRow rowOf(const Types& types, int id, std::size_t variables) {
    const DataTypeTable& table = types.table();
    const DataType& type = *table.getDataTypeAt(positionOf(id));
    model::TypeRow row;
    row.id = id;
    row.name = type.getName();
    row.kind = kindOf(table, id);
    row.size = type.getSize();
    // A type that names no built-in type here has had no storage set.
    if (DataTypeTable::checkForBuiltInDataType(type.getStorageId())) {
        row.storage = nameOf(table, type.getStorageId());
    }
    if (type.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        row.aliasOf = nameOf(table, type.getIdAliasedTo());
    }
    if (row.kind == model::Kind::Struct) {
        const auto& structType = static_cast<const StructDataType&>(type);
        row.elements = structType.getNumElements();
        row.leaves = structType.getNumFlatElements();
    }
    row.variables = variables;
    row.originalName = types.originalNameOf(id);
    return row;
}

/// The types that the model has brought along, and those of the table's own that it uses or
/// declares a type on.
std::vector<model::TypeRow> typeRows(const Types& types,
                                     const std::vector<std::size_t>& usesByPosition) {
    const DataTypeTable& table = types.table();
    std::set<int> ids;
    for (int id = 0; id < table.getNumDataTypes() - 1; ++id) {
        const bool isOfModel =
            !DataTypeTable::checkForBuiltInDataType(id) && !DataTypeTable::isPredefinedDataType(id);
        if (isOfModel || usesByPosition[positionOf(id)] > 0) {
            ids.insert(id);
        }
        if (const int target = table.getDataTypeIdAliasedTo(id); target != INVALID_DATA_TYPE_ID) {
            ids.insert(target);
        }
    }
    std::vector<model::TypeRow> rows;
    rows.reserve(ids.size());
    for (const int id : ids) {
        rows.push_back(rowOf(types, id, usesByPosition[positionOf(id)]));
    }
    return rows;
}

std::vector<model::OutsideRow> outsideRows(const fmi::Description& description) {
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
    std::vector<model::OutsideRow> rows;
    for (std::size_t i = 0; i < fmi::baseTypeCount; ++i) {
        const auto base = static_cast<fmi::BaseType>(i);
        if (isOutside(base) && (counts[i].variables > 0 || counts[i].types > 0)) {
            rows.push_back({std::string(fmi::nameOf(base, description.majorVersion)),
                            counts[i].variables, counts[i].types});
        }
    }
    return rows;
}

std::vector<std::size_t> countUses(const Model& model) {
    std::vector<std::size_t> uses(static_cast<std::size_t>(model.types.table().getNumDataTypes()));
    for (const int id : model.variableIds) {
        if (id != INVALID_DATA_TYPE_ID) {
            ++uses[positionOf(id)];
        }
    }
    for (const Structs::Type& type : model.structs.all()) {
        uses[positionOf(type.id)] = type.variables;
    }
    return uses;
}

model::UnitSource sourceOf(UnitBasis basis) {
    switch (basis) {
    case UnitBasis::Name:
        return model::UnitSource::Name;
    case UnitBasis::Reading:
        return model::UnitSource::Reading;
    case UnitBasis::BaseUnits:
        return model::UnitSource::BaseUnits;
    case UnitBasis::Nothing:
        break;
    }
    return model::UnitSource::Nothing;
}

std::vector<model::UnitRow> unitRows(const Model& model) {
    std::vector<model::UnitRow> rows;
    for (const fmi::UnitDefinition& definition : model.description->units) {
        const Units::Unit& unit = model.units.all()[rows.size()];
        rows.push_back({std::string(definition.name),
                        sourceOf(unit.basis),
                        unit.id,
                        unit.expression,
                        definition.base ? textOf(*definition.base) : "",
                        {}});
    }
    for (const fmi::Variable& variable : model.description->variables) {
        if (variable.unit != fmi::noIndex) {
            rows[variable.unit].variables.emplace_back(variable.name);
        }
    }
    return rows;
}

std::vector<model::DimensionRow> dimensionRows(const Model& model) {
    std::vector<model::DimensionRow> rows;
    for (const Dimensions::Distinct& dimensions : model.dimensions.all()) {
        model::DimensionRow row{dimensions.id, model.dimensions.textOf(dimensions.id), {}};
        for (const std::uint32_t variable : dimensions.variables) {
            row.variables.emplace_back(model.description->variables[variable].name);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

model::Findings inspect(Model& model) {
    model::Findings findings;
    findings.fmiVersion = model.description->fmiVersion;
    findings.modelName = model.description->modelName;
    findings.variables = model.description->variables.size();
    findings.types = typeRows(model.types, countUses(model));
    findings.outside = outsideRows(*model.description);
    findings.units = unitRows(model);
    findings.dimensions = dimensionRows(model);
    findings.facts = model.dimensions.facts();
    findings.remarks = std::move(model.remarks);
    return findings;
}

} // namespace

model::Findings inspectSource(fmi::Source& source, fmi::Remarks remarks) {
    Model model(source, std::move(remarks));
    return inspect(model);
}

model::Findings inspectFile(const std::string& path) {
    const std::unique_ptr<Model> model = readModel(path);
    model::Findings findings = inspect(*model);
    findings.file = path;
    return findings;
}

} // namespace tvtool::model
