#include "model/inspection.h"

#include "fmi/checks.h"
#include "fmi/reader.h"
#include "model/types.h"

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

std::vector<std::size_t> countUses(const fmi::Description& description, Types& types) {
    std::vector<std::size_t> uses;
    for (const fmi::Variable& variable : description.variables) {
        const int id = types.idOf(variable);
        uses.resize(static_cast<std::size_t>(types.table().getNumDataTypes()));
        if (id != INVALID_DATA_TYPE_ID) {
            ++uses[positionOf(id)];
        }
    }
    uses.resize(static_cast<std::size_t>(types.table().getNumDataTypes()));
    return uses;
}

} // namespace

report::Findings inspectSource(fmi::Source& source, fmi::Remarks remarks) {
    report::Findings findings;
    findings.remarks = std::move(remarks);
    const std::unique_ptr<fmi::Description> description =
        fmi::readDescription(source, findings.remarks);
    fmi::checkDescription(*description, findings.remarks);

    Types types(*description, findings.remarks);
    const std::vector<std::size_t> uses = countUses(*description, types);
    findings.fmiVersion = description->fmiVersion;
    findings.modelName = description->modelName;
    findings.variables = description->variables.size();
    findings.types = typeRows(types, uses);
    findings.outside = outsideRows(*description);
    findings.remarks.sort();
    return findings;
}

report::Findings inspectFile(const std::string& path) {
    fmi::Remarks remarks;
    const std::unique_ptr<fmi::Source> source = fmi::openSource(path, remarks);
    report::Findings findings = inspectSource(*source, std::move(remarks));
    findings.file = path;
    return findings;
}

} // namespace tvtool::model
