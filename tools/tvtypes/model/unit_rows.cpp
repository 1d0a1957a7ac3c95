#include "model/unit_rows.h"

#include "model/unit_checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

namespace tvtool::model {

namespace {

/// The longest text, in bytes, that a cell shows in full: a longer one would widen its column.
constexpr std::size_t longestCell = 40;

template <class Row>
std::size_t variableCount(const Row& row) {
    return row.variables.size();
}

template <class Row>
std::string firstVariables(const Row& row) {
    constexpr std::size_t most = 3;
    std::vector<std::string> names;
    for (const std::string& name : row.variables) {
        if (names.size() == most) {
            names.emplace_back("...");
            break;
        }
        names.push_back(text::safeText(text::shortened(name, longestCell)));
    }
    return fmt::format("{}", fmt::join(names, ", "));
}

using output::none;
using UnitColumn = output::Column<UnitRow>;
using DimensionColumn = output::Column<DimensionRow>;

} // namespace

const output::Columns<UnitRow> unitColumns{
    {"id", none, &UnitRow::id},
    UnitColumn("unit", none, &UnitRow::name).shortenedTo(longestCell),
    {none, "name", [](const UnitRow& row) { return boost::json::value(row.name); }},
    {none, "id", &UnitRow::id},
    UnitColumn("expression", "expression", &UnitRow::expression).shortenedTo(longestCell),
    {"from", "from", &UnitRow::source},
    {"base units", "baseUnits", &UnitRow::baseUnits},
    {"variables", none, variableCount<UnitRow>},
    UnitColumn("which", "variables", &UnitRow::variables).shownAs(firstVariables<UnitRow>),
};

const output::Columns<DimensionRow> dimensionColumns{
    {"id", "id", &DimensionRow::id},
    DimensionColumn("dimensions", "text", &DimensionRow::text).shortenedTo(longestCell),
    {"variables", none, variableCount<DimensionRow>},
    DimensionColumn("which", "variables", &DimensionRow::variables)
        .shownAs(firstVariables<DimensionRow>),
};

namespace {

const char* sourceName(UnitBasis basis) {
    switch (basis) {
    case UnitBasis::Name:
        return "name";
    case UnitBasis::Reading:
        return "reading";
    case UnitBasis::BaseUnits:
        return "base units";
    case UnitBasis::Nothing:
        break;
    }
    return "";
}

} // namespace

std::vector<UnitRow> unitRows(const Model& model) {
    std::vector<UnitRow> rows;
    for (const fmi::UnitDefinition& definition : model.description->units) {
        const Units::Unit& unit = model.units.all()[rows.size()];
        UnitRow& row = rows.emplace_back();
        row.name = definition.name;
        if (unit.basis != UnitBasis::Nothing) {
            row.id = unit.id;
        }
        row.expression = unit.expression;
        row.source = sourceName(unit.basis);
        row.baseUnits = definition.base ? textOf(*definition.base) : "";
    }
    for (const fmi::Variable& variable : model.description->variables) {
        if (variable.unit != fmi::noIndex) {
            rows[variable.unit].variables.emplace_back(variable.name);
        }
    }
    return rows;
}

std::vector<DimensionRow> dimensionRows(const Model& model) {
    std::vector<DimensionRow> rows;
    for (const Dimensions::Distinct& dimensions : model.dimensions.all()) {
        DimensionRow& row = rows.emplace_back();
        row.id = dimensions.id;
        row.text = model.dimensions.textOf(dimensions.id);
        for (const std::uint32_t variable : dimensions.variables) {
            row.variables.emplace_back(model.description->variables[variable].name);
        }
    }
    return rows;
}

} // namespace tvtool::model
