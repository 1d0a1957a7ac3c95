#include "model/inspection_text.h"

#include "dims/text.h"
#include "output/table.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/color.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace tvtool::model {

namespace {

/// For a table: a long text would make its column as wide for all.
std::string shortened(const std::string& text) {
    constexpr std::size_t longest = 40;
    return text::safeText(text::shortened(text, longest));
}

void printSummary(const Findings& findings, std::ostream& os) {
    os << fmt::format("{}: FMI {}, model \"{}\": {}, {}, {}, {}\n", text::safeText(findings.file),
                      text::safeText(findings.fmiVersion), text::safeText(findings.modelName),
                      text::counted(findings.variables, "variable", "variables"),
                      text::counted(findings.types.size(), "type", "types"),
                      text::counted(findings.remarks.problems().size(), "problem", "problems"),
                      text::counted(findings.remarks.notes().size(), "note", "notes"));
}

void printTypes(const Findings& findings, fmt::text_style headingStyle, std::ostream& os) {
    if (findings.types.empty()) {
        return;
    }
    const bool hasOriginals = std::ranges::any_of(
        findings.types, [](const TypeRow& type) { return !type.originalName.empty(); });
    const bool hasStructs = std::ranges::any_of(
        findings.types, [](const TypeRow& type) { return type.kind == Kind::Struct; });
    output::Table table;
    table.addColumn("id", output::Align::Right);
    table.addColumn("name", output::Align::Left);
    table.addColumn("kind", output::Align::Left);
    table.addColumn("size", output::Align::Right);
    table.addColumn("storage", output::Align::Left);
    table.addColumn("alias of", output::Align::Left);
    table.addColumn("variables", output::Align::Right);
    if (hasStructs) {
        table.addColumn("elements", output::Align::Right);
        table.addColumn("leaves", output::Align::Right);
    }
    if (hasOriginals) {
        table.addColumn("original name", output::Align::Left);
    }
    for (const TypeRow& type : findings.types) {
        std::vector<std::string> cells{
            std::to_string(type.id),       type.name,    nameOf(type.kind),
            std::to_string(type.size),     type.storage, type.aliasOf,
            std::to_string(type.variables)};
        if (hasStructs) {
            const bool isStruct = type.kind == Kind::Struct;
            cells.push_back(isStruct ? std::to_string(type.elements) : "");
            cells.push_back(isStruct ? std::to_string(type.leaves) : "");
        }
        if (hasOriginals) {
            cells.push_back(text::safeText(type.originalName));
        }
        table.addRow(std::move(cells));
    }
    os << '\n';
    table.print(os, headingStyle);
}

/// The first of them.
std::string someOf(const std::vector<std::string>& variables) {
    constexpr std::size_t most = 3;
    std::string some;
    for (std::size_t i = 0; i < variables.size() && i < most; ++i) {
        some += (i == 0 ? "" : ", ") + shortened(variables[i]);
    }
    return variables.size() > most ? some + ", ..." : some;
}

void printUnits(const std::vector<UnitRow>& units, fmt::text_style headingStyle, std::ostream& os) {
    if (units.empty()) {
        return;
    }
    output::Table table;
    table.addColumn("id", output::Align::Right);
    table.addColumn("unit", output::Align::Left);
    table.addColumn("expression", output::Align::Left);
    table.addColumn("from", output::Align::Left);
    table.addColumn("base units", output::Align::Left);
    table.addColumn("variables", output::Align::Right);
    table.addColumn("which", output::Align::Left);
    for (const UnitRow& unit : units) {
        const bool hasPlace = unit.source != UnitSource::Nothing;
        table.addRow({hasPlace ? std::to_string(unit.id) : "", shortened(unit.name),
                      shortened(unit.expression), nameOf(unit.source), unit.baseUnits,
                      std::to_string(unit.variables.size()), someOf(unit.variables)});
    }
    os << '\n';
    table.print(os, headingStyle);
}

void printDimensions(const std::vector<DimensionRow>& rows, fmt::text_style headingStyle,
                     std::ostream& os) {
    if (rows.empty()) {
        return;
    }
    output::Table table;
    table.addColumn("id", output::Align::Right);
    table.addColumn("dimensions", output::Align::Left);
    table.addColumn("variables", output::Align::Right);
    table.addColumn("which", output::Align::Left);
    for (const DimensionRow& row : rows) {
        table.addRow({std::to_string(row.id), shortened(row.text),
                      std::to_string(row.variables.size()), someOf(row.variables)});
    }
    os << '\n';
    table.print(os, headingStyle);
}

void printOutside(const std::vector<OutsideRow>& rows, std::ostream& os) {
    if (rows.empty()) {
        return;
    }
    std::vector<std::string> parts;
    for (const OutsideRow& row : rows) {
        std::string part =
            row.baseType + ' ' + text::counted(row.variables, "variable", "variables");
        if (row.types > 0) {
            part += " and " + text::counted(row.types, "type", "types");
        }
        parts.push_back(std::move(part));
    }
    os << fmt::format("\nOutside the table: {}\n", fmt::join(parts, ", "));
}

void printRemarks(const Findings& findings, std::string_view heading,
                  const std::vector<fmi::Remark>& remarks, fmt::text_style style,
                  std::ostream& os) {
    if (remarks.empty()) {
        return;
    }
    os << '\n' << fmt::format(style, "{}", heading) << '\n';
    const std::string file = text::safeText(findings.file);
    for (const fmi::Remark& remark : remarks) {
        const std::string line = remark.line == 0 ? "" : fmt::format(":{}", remark.line);
        const std::string count = remark.count == 1 ? "" : fmt::format(" ({} times)", remark.count);
        os << fmt::format("{}{}: {}: {}{}\n", file, line, text::safeText(remark.element),
                          text::safeText(remark.sentence), count);
    }
}

} // namespace

void printText(const Findings& findings, bool colour, std::ostream& os) {
    const auto styled = [colour](fmt::text_style style) {
        return colour ? style : fmt::text_style();
    };
    const fmt::text_style bold = styled(fmt::emphasis::bold);
    printSummary(findings, os);
    printTypes(findings, bold, os);
    printOutside(findings.outside, os);
    printUnits(findings.units, bold, os);
    printDimensions(findings.dimensions, bold, os);
    printFacts(findings.facts, bold, os);
    printRemarks(findings, "Problems", findings.remarks.problems(),
                 bold | styled(fmt::fg(fmt::terminal_color::red)), os);
    printRemarks(findings, "Notes", findings.remarks.notes(),
                 bold | styled(fmt::fg(fmt::terminal_color::yellow)), os);
}

} // namespace tvtool::model
