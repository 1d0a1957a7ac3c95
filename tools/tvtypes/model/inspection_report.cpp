// The reports of an inspection, as text and as JSON.
#include "dims/fact_columns.h"
#include "model/inspection.h"
#include "output/columns.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace tvtool::model {

namespace {

using findings::Finding;
using findings::Severity;
using output::Column;
using output::Columns;
using output::none;

/// The longest text of a cell, in bytes: a longer one would widen its column too much.
constexpr std::size_t longestCell = 40;
/// The number of variables that a cell names.
constexpr std::size_t namedVariables = 3;

template <class Row>
std::size_t variableCount(const Row& row) {
    return row.variables.size();
}

template <class Row>
std::string firstVariables(const Row& row) {
    std::string text;
    for (std::size_t i = 0; i < std::min(row.variables.size(), namedVariables); ++i) {
        text += i > 0 ? ", " : "";
        text += text::safeText(text::shortened(row.variables[i], longestCell));
    }
    return text + (row.variables.size() > namedVariables ? ", ..." : "");
}

const Columns<TypeRow> typeColumns{
    {"id", "id", &TypeRow::id},
    {"name", "name", &TypeRow::name},
    {"kind", "kind", &TypeRow::kind},
    {"size", "size", &TypeRow::size},
    {"storage", "storage", &TypeRow::storage},
    {"alias of", "aliasOf", &TypeRow::aliasOf},
    {"variables", "variables", &TypeRow::variables},
    {none, "originalName", &TypeRow::originalName},
    Column<TypeRow>("elements", "elements", &TypeRow::elements).ifAny(),
    Column<TypeRow>("leaves", "leaves", &TypeRow::leaves).ifAny(),
    Column<TypeRow>("original name", none, &TypeRow::originalName).ifAny(),
};

const Columns<OutsideRow> outsideColumns{
    {none, "baseType", &OutsideRow::baseType},
    {none, "variables", &OutsideRow::variables},
    {none, "types", &OutsideRow::types},
};

const Columns<UnitRow> unitColumns{
    {"id", none, &UnitRow::id},
    Column<UnitRow>("unit", "name", &UnitRow::name).shortenedTo(longestCell),
    {none, "id", &UnitRow::id},
    Column<UnitRow>("expression", "expression", &UnitRow::expression).shortenedTo(longestCell),
    {"from", "from", &UnitRow::source},
    {"base units", "baseUnits", &UnitRow::baseUnits},
    {"variables", none, variableCount<UnitRow>},
    Column<UnitRow>("which", "variables", &UnitRow::variables).shownAs(firstVariables<UnitRow>),
};

const Columns<DimensionRow> dimensionColumns{
    {"id", "id", &DimensionRow::id},
    Column<DimensionRow>("dimensions", "text", &DimensionRow::text).shortenedTo(longestCell),
    {"variables", none, variableCount<DimensionRow>},
    Column<DimensionRow>("which", "variables", &DimensionRow::variables)
        .shownAs(firstVariables<DimensionRow>),
};

const Columns<Finding> findingColumns{
    {none, "code", [](const Finding& finding) { return ruleOf(finding.code).name; }},
    {none, "severity",
     [](const Finding& finding) { return severityName(ruleOf(finding.code).severity); }},
    {none, "element", &Finding::element},
    {none, "line",
     [](const Finding& finding) {
         return finding.line == 0 ? std::nullopt : std::optional(finding.line);
     }},
    {none, "sentence", &Finding::sentence},
    {none, "count", &Finding::count},
};

void printSummary(const Inspection& inspection, std::ostream& os) {
    os << fmt::format(
        "{}: FMI {}, model \"{}\": {}, {}; {}, {}, {}\n", text::safeText(inspection.file),
        text::safeText(inspection.fmiVersion), text::safeText(inspection.modelName),
        text::counted(inspection.variables, "variable", "variables"),
        text::counted(inspection.types.size(), "type", "types"),
        text::counted(inspection.findings.count(Severity::Error), "error", "errors"),
        text::counted(inspection.findings.count(Severity::Warning), "warning", "warnings"),
        text::counted(inspection.findings.count(Severity::Note), "note", "notes"));
}

void printOutside(const std::vector<OutsideRow>& rows, std::ostream& os) {
    std::string list;
    for (const OutsideRow& row : rows) {
        list += fmt::format("{}{} {}", list.empty() ? "" : ", ", row.baseType,
                            text::counted(row.variables, "variable", "variables"));
        if (row.types > 0) {
            list += " and " + text::counted(row.types, "type", "types");
        }
    }
    os << (list.empty() ? "" : fmt::format("\nOutside the table: {}\n", list));
}

void printFindings(const Inspection& inspection, fmt::text_style style, std::ostream& os) {
    if (inspection.findings.all().empty()) {
        return;
    }
    os << '\n' << fmt::format(style, "Findings") << '\n';
    for (const Finding& finding : inspection.findings.all()) {
        const findings::Rule& rule = ruleOf(finding.code);
        const std::string place =
            finding.line == 0 ? "" : fmt::format(":{}:{}", finding.line, finding.column);
        const std::string count =
            finding.count == 1 ? "" : fmt::format(" ({} times)", finding.count);
        os << fmt::format("{}{}: {}: {}{} [{}]\n", text::safeText(inspection.file), place,
                          severityName(rule.severity), text::safeText(finding.sentence), count,
                          rule.name);
    }
}

} // namespace

void printText(const Inspection& inspection, bool colour, std::ostream& os) {
    const fmt::text_style bold = output::bold(colour);
    printSummary(inspection, os);
    output::printSection(inspection.types, typeColumns, bold, os);
    printOutside(inspection.outside, os);
    output::printSection(inspection.units, unitColumns, bold, os);
    output::printSection(inspection.dimensions, dimensionColumns, bold, os);
    output::printSection(inspection.facts, dims::factColumns, bold, os);
    printFindings(inspection, output::bold(colour, fmt::terminal_color::red), os);
}

void printJson(const Inspection& inspection, std::ostream& os) {
    using output::jsonArray;
    output::printJson({{"file", inspection.file},
                       {"fmiVersion", inspection.fmiVersion},
                       {"modelName", inspection.modelName},
                       {"variables", inspection.variables},
                       {"types", jsonArray(inspection.types, typeColumns)},
                       {"outside", jsonArray(inspection.outside, outsideColumns)},
                       {"units", jsonArray(inspection.units, unitColumns)},
                       {"dimensions", jsonArray(inspection.dimensions, dimensionColumns)},
                       {"facts", jsonArray(inspection.facts, dims::factColumns)},
                       {"findings", jsonArray(inspection.findings.all(), findingColumns)}},
                      os);
}

} // namespace tvtool::model
