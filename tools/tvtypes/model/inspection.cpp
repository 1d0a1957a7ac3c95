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

report::Kind kindOf(const DataTypeTable& table, int id) {
    if (DataTypeTable::checkForBuiltInDataType(id)) {
        return report::Kind::BuiltIn;
    }
    if (table.getDataTypeIdAliasedTo(id) != INVALID_DATA_TYPE_ID) {
        return report::Kind::Alias;
    }
    if (table.getDataTypeAt(positionOf(id))->getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        return report::Kind::Struct;
    }
    return table.isEnumType(id) ? report::Kind::Enumerated : report::Kind::FixedPoint;
}

std::string nameOf(const DataTypeTable& table, int id) {
    return table.getDataTypeAt(positionOf(id))->getName();
}

report::TypeRow rowOf(const Types& types, int id, std::size_t variables) {
    const DataTypeTable& table = types.table();
    const DataType& type = *table.getDataTypeAt(positionOf(id));
    report::TypeRow row;
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
    if (row.kind == report::Kind::Struct) {
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
std::vector<report::TypeRow> typeRows(const Types& types,
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
    std::vector<report::TypeRow> rows;
    rows.reserve(ids.size());
    for (const int id : ids) {
        rows.push_back(rowOf(types, id, usesByPosition[positionOf(id)]));
    }
    return rows;
}

std::vector<report::OutsideRow> outsideRows(const fmi::Description& description) {
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
    std::vector<report::OutsideRow> rows;
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

report::UnitSource sourceOf(UnitBasis basis) {
    switch (basis) {
    case UnitBasis::Name:
        return report::UnitSource::Name;
    case UnitBasis::Reading:
        return report::UnitSource::Reading;
    case UnitBasis::BaseUnits:
        return report::UnitSource::BaseUnits;
    case UnitBasis::Nothing:
        break;
    }
    return report::UnitSource::Nothing;
}

std::vector<report::UnitRow> unitRows(const Model& model) {
    std::vector<report::UnitRow> rows;
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

std::vector<report::DimensionRow> dimensionRows(const Model& model) {
    std::vector<report::DimensionRow> rows;
    for (const Dimensions::Distinct& dimensions : model.dimensions.all()) {
        report::DimensionRow row{dimensions.id, model.dimensions.textOf(dimensions.id), {}};
        for (const std::uint32_t variable : dimensions.variables) {
            row.variables.emplace_back(model.description->variables[variable].name);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

report::Findings inspect(Model& model) {
    report::Findings findings;
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

report::Findings inspectSource(fmi::Source& source, fmi::Remarks remarks) {
    Model model(source, std::move(remarks));
    return inspect(model);
}

report::Findings inspectFile(const std::string& path) {
    const std::unique_ptr<Model> model = readModel(path);
    report::Findings findings = inspect(*model);
    findings.file = path;
    return findings;
}

} // namespace tvtool::model
