// The reports of memory maps, as text and as JSON.
#include "findings/json.h"
#include "model/memory_map.h"
#include "output/columns.h"
#include "output/terminal.h"

#include <fmt/format.h>

#include <utility>

namespace tvtool::model {

namespace {

using output::none;

std::string pathCell(const LayoutRow& row) {
    if (row.kind == RowKind::Padding) {
        return "(padding)";
    }
    return row.depth == 0 ? "(struct)" : text::safeText(row.path);
}

const output::Columns<LayoutRow> rowColumns{
    {none, "kind", [](const LayoutRow& row) { return kindName(row.kind); }},
    {none, "depth", &LayoutRow::depth},
    {"offset", "offset", &LayoutRow::offset},
    {"size", "size", &LayoutRow::size},
    output::Column<LayoutRow>("path", "path", &LayoutRow::path).shownAs(pathCell),
    {"type", "type", &LayoutRow::type},
    {"dfs", "dfs", &LayoutRow::dfs},
    {"flat", "flat", &LayoutRow::flat},
    {"raw", "raw", &LayoutRow::raw},
};

const output::Columns<StructMap> structColumns{
    {none, "id", &StructMap::id},
    {none, "name", &StructMap::name},
    {none, "originalName", &StructMap::originalName},
    {none, "path", &StructMap::path},
    {none, "size", &StructMap::size},
    {none, "alignment", &StructMap::alignment},
    {none, "elements", &StructMap::elements},
    {none, "leaves", &StructMap::leaves},
    {none, "scalars", &StructMap::scalars},
    {none, "rows", [](const StructMap& map) { return output::jsonArray(map.rows, rowColumns); }},
};

} // namespace

void printText(const MemoryMaps& maps, bool colour, std::ostream& os) {
    if (maps.structs.empty()) {
        os << fmt::format(
            "{}: no struct types{}\n", text::safeText(maps.file),
            maps.hasStructuredNames ? "" : ": variableNamingConvention is not \"structured\"");
    }
    const char* separator = "";
    for (const StructMap& map : maps.structs) {
        os << separator;
        output::printWrapped(fmt::format("{}: {}", text::safeText(map.heading()), map.summary()), 4,
                             os);
        os << '\n';
        output::printTable(map.rows, rowColumns, output::bold(colour), os);
        separator = "\n";
    }
}

void printJson(const MemoryMaps& maps, std::ostream& os) {
    output::printJson("layout",
                      {{"file", maps.file},
                       {"problems", maps.problems()},
                       {"structs", output::jsonArray(maps.structs, structColumns)},
                       {"findings", findings::jsonArray(maps.findings, maps.file)}},
                      os);
}

} // namespace tvtool::model
