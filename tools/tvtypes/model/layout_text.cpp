#include "model/layout_text.h"

#include "model/inspection_text.h"
#include "output/table.h"
#include "text/safe_text.h"

#include <fmt/color.h>
#include <fmt/format.h>

namespace tvtool::model {

namespace {

std::string numberOrNone(int number) { return number == noNumber ? "" : std::to_string(number); }

std::string pathOf(const LayoutRow& row) {
    if (row.kind == RowKind::Padding) {
        return "(padding)";
    }
    return row.depth == 0 ? "(struct)" : text::safeText(row.path);
}

void printMap(const StructMap& map, fmt::text_style headingStyle, std::ostream& os) {
    os << map.name;
    if (!map.originalName.empty()) {
        os << fmt::format(" ({})", text::safeText(map.originalName));
    }
    os << ": " << summaryOf(map) << "\n\n";
    output::Table table;
    table.addColumn("offset", output::Align::Right);
    table.addColumn("size", output::Align::Right);
    table.addColumn("path", output::Align::Left);
    table.addColumn("type", output::Align::Left);
    table.addColumn("dfs", output::Align::Right);
    table.addColumn("flat", output::Align::Right);
    table.addColumn("raw", output::Align::Right);
    for (const LayoutRow& row : map.rows) {
        table.addRow({std::to_string(row.offset), std::to_string(row.size), pathOf(row), row.type,
                      numberOrNone(row.dfs), numberOrNone(row.flat), numberOrNone(row.raw)});
    }
    table.print(os, headingStyle);
}

} // namespace

void printLayout(const LayoutFindings& findings, bool colour, std::ostream& os) {
    if (findings.structs.empty()) {
        os << fmt::format(
            "{}: no struct types{}\n", text::safeText(findings.file),
            findings.hasStructuredNames ? "" : ": variableNamingConvention is not \"structured\"");
    }
    const fmt::text_style bold = colour ? fmt::text_style(fmt::emphasis::bold) : fmt::text_style();
    bool isFirst = true;
    for (const StructMap& map : findings.structs) {
        os << (isFirst ? "" : "\n");
        printMap(map, bold, os);
        isFirst = false;
    }
}

} // namespace tvtool::model
