#include "model/inspection_report.h"

#include "dims/report.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

namespace tvtool::model {

namespace {

using fmi::Remark;
using output::none;

const output::Columns<Remark> remarkColumns{
    {none, "element", &Remark::element},
    {none, "line",
     [](const Remark& remark) {
         return remark.line == 0 ? std::nullopt : std::optional(remark.line);
     }},
    {none, "sentence", &Remark::sentence},
    {none, "count", &Remark::count},
};

void printSummary(const Inspection& inspection, std::ostream& os) {
    os << fmt::format("{}: FMI {}, model \"{}\": {}, {}, {}, {}\n", text::safeText(inspection.file),
                      text::safeText(inspection.fmiVersion), text::safeText(inspection.modelName),
                      text::counted(inspection.variables, "variable", "variables"),
                      text::counted(inspection.types.size(), "type", "types"),
                      text::counted(inspection.remarks.problems().size(), "problem", "problems"),
                      text::counted(inspection.remarks.notes().size(), "note", "notes"));
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

void printRemarks(const std::string& file, std::string_view heading,
                  const std::vector<Remark>& remarks, fmt::text_style style, std::ostream& os) {
    if (remarks.empty()) {
        return;
    }
    os << '\n' << fmt::format(style, "{}", heading) << '\n';
    for (const Remark& remark : remarks) {
        const std::string line = remark.line == 0 ? "" : fmt::format(":{}", remark.line);
        const std::string count = remark.count == 1 ? "" : fmt::format(" ({} times)", remark.count);
        os << fmt::format("{}{}: {}: {}{}\n", text::safeText(file), line,
                          text::safeText(remark.element), text::safeText(remark.sentence), count);
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
    printRemarks(inspection.file, "Problems", inspection.remarks.problems(),
                 output::bold(colour, fmt::terminal_color::red), os);
    printRemarks(inspection.file, "Notes", inspection.remarks.notes(),
                 output::bold(colour, fmt::terminal_color::yellow), os);
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
                       {"problems", jsonArray(inspection.remarks.problems(), remarkColumns)},
                       {"notes", jsonArray(inspection.remarks.notes(), remarkColumns)}},
                      os);
}

} // namespace tvtool::model
