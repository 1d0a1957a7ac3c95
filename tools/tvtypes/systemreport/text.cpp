// The report of a system as text.
#include "findings/text.h"
#include "output/columns.h"
#include "systemreport/report.h"
#include "systems/unit_conversion.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace tvtool::systemreport {

namespace {

using findings::Severity;
using output::Column;
using output::Columns;
using output::none;
using systems::ConnectionRow;
using systems::Effect;
using systems::End;
using systems::ParameterRow;
using systems::StructRow;

/// Longer lists are limited to what is converted or has findings, unless the call has a choice.
constexpr std::size_t longestList = 200;
constexpr std::size_t narrowestName = 20;
constexpr std::size_t longestCell = 40;

std::string nameText(const End& end) {
    std::string text(end.elementName);
    text += end.elementName.empty() ? "" : ".";
    text += end.connectorName;
    if (end.indices != nullptr) {
        text += fmt::format("[{}]", fmt::join(*end.indices, ", "));
    }
    return text;
}

/// Returns a text that both ends have, or "a -> b". \param absent the text of an end without one
std::string atBothEnds(std::string_view source, std::string_view target, const char* absent) {
    if (source == target) {
        return std::string(source);
    }
    return fmt::format("{} -> {}", source.empty() ? absent : source,
                       target.empty() ? absent : target);
}

/// Returns the dimensions of what flows; empty for a scalar.
std::string_view dimensionsOf(const End& end) {
    return end.indices == nullptr ? std::string_view(end.dimensionText) : std::string_view();
}

/// Returns the codes of the errors and warnings, each once.
std::string codesText(const std::vector<findings::Code>& codes) {
    std::vector<std::string_view> names;
    for (const findings::Code code : codes) {
        const findings::Rule& rule = findings::ruleOf(code);
        if (rule.severity != Severity::Note && std::ranges::count(names, rule.name) == 0) {
            names.emplace_back(rule.name);
        }
    }
    return fmt::format("{}", fmt::join(names, ", "));
}

std::string_view systemName(const ConnectionRow& row) {
    // Only systems within systems have a name in the table.
    return row.system == &row.system->file->root() ? std::string_view() : row.system->name;
}

const Columns<ConnectionRow> connectionColumns{
    Column<ConnectionRow>("system", none, systemName).ifAny().omittedAt(2),
    Column<ConnectionRow>("from", none,
                          [](const ConnectionRow& row) { return nameText(row.source); })
        .atLeast(narrowestName),
    Column<ConnectionRow>("to", none, [](const ConnectionRow& row) { return nameText(row.target); })
        .atLeast(narrowestName),
    Column<ConnectionRow>("type", none,
                          [](const ConnectionRow& row) {
                              return atBothEnds(row.source.typeName, row.target.typeName, "?");
                          })
        .shortenedTo(longestCell),
    Column<ConnectionRow>("unit", none,
                          [](const ConnectionRow& row) {
                              return atBothEnds(row.source.unit, row.target.unit, "none");
                          })
        .shortenedTo(longestCell)
        .ifAny(),
    Column<ConnectionRow>("dimensions", none,
                          [](const ConnectionRow& row) {
                              return atBothEnds(dimensionsOf(row.source), dimensionsOf(row.target),
                                                "scalar");
                          })
        .shortenedTo(longestCell)
        .ifAny()
        .omittedAt(3),
    {"value", none, effectText},
    Column<ConnectionRow>("findings", none,
                          [](const ConnectionRow& row) { return codesText(row.codes); })
        .ifAny()
        .omittedAt(1),
};

const Columns<StructRow> structColumns{
    {"from", none, &StructRow::source},
    {"to", none, &StructRow::target},
    {"connected", none,
     [](const StructRow& row) { return fmt::format("{} of {}", row.connected, row.elements); }},
    {"same type", none, &StructRow::isSameType},
};

/// Some of the rows of a list.
template <class Row>
struct SelectedRows {
    std::vector<const Row*> rows;

    std::size_t size() const { return rows.size(); }
    const Row& operator[](std::size_t row) const { return *rows[row]; }
};

class TextReport {
  public:
    TextReport(const Report& report, bool colour, std::ostream& os)
        : report_(report), checked_(report.checked), colour_(colour), os_(os) {}

    void print() {
        output::printWrapped(summaryText(checked_, report_.file), 4, os_);
        printConnections();
        printParameters();
        printSection("Structs", checked_.structs, structColumns);
        os_ << '\n';
        printFindings(checked_, report_.options.showsAllFindings, colour_, os_);
    }

  private:
    template <class Rows, class Row>
    void printSection(const char* heading, const Rows& rows, const Columns<Row>& columns) {
        if (rows.size() > 0) {
            os_ << '\n' << fmt::format(output::bold(colour_), "{}", heading) << '\n';
            output::printTable(rows, columns, colour_ ? fmt::emphasis::faint : fmt::text_style(),
                               os_);
        }
    }

    void printConnections() {
        const bool isLong = !report_.options.isChosen && checked_.connections.size() > longestList;
        SelectedRows<ConnectionRow> listed;
        for (const ConnectionRow& row : checked_.connections) {
            const bool isSelected = isLong ? isListed(row, ConnectionChoice::Converted) ||
                                                 isListed(row, ConnectionChoice::Findings)
                                           : isListed(row, report_.options.connections);
            if (isSelected) {
                listed.rows.push_back(&row);
            }
        }
        printSection("Connections", listed, connectionColumns);
        const std::size_t others = checked_.connections.size() - listed.size();
        if (isLong && others > 0) {
            os_ << fmt::format("\n{} without a conversion and without findings; --connections all "
                               "lists {}\n",
                               text::counted(others, "other connection", "other connections"),
                               others == 1 ? "it" : "them");
        }
    }

    void printParameters() {
        if (report_.options.connections == ConnectionChoice::None) {
            return;
        }
        const std::vector<ParameterRow>& rows = checked_.parameters;
        const auto place = [](const ParameterRow& row) {
            return fmt::format("{}:{}", row.set->file->path, row.parameter->place.line);
        };
        const Columns<ParameterRow> columns{
            Column<ParameterRow>("parameter", none, &ParameterRow::target).atLeast(narrowestName),
            Column<ParameterRow>("value", none, &ParameterRow::value).shortenedTo(longestCell),
            Column<ParameterRow>("unit", none, &ParameterRow::unit)
                .shortenedTo(longestCell)
                .ifAny(),
            Column<ParameterRow>("becomes", none, &ParameterRow::applied)
                .shortenedTo(longestCell)
                .ifAny(),
            Column<ParameterRow>("set at", none, place).omittedAt(2),
            Column<ParameterRow>("overridden by", none,
                                 [&](const ParameterRow& row) {
                                     return row.overriddenBy ? place(rows[*row.overriddenBy])
                                                             : std::string();
                                 })
                .ifAny(),
            Column<ParameterRow>("findings", none,
                                 [](const ParameterRow& row) { return codesText(row.codes); })
                .ifAny()
                .omittedAt(1),
        };
        SelectedRows<ParameterRow> listed;
        const bool isLong = !report_.options.isChosen && rows.size() > longestList;
        for (const ParameterRow& row : rows) {
            if (!isLong || !row.codes.empty()) {
                listed.rows.push_back(&row);
            }
        }
        printSection("Parameters", listed, columns);
        if (listed.size() < rows.size()) {
            os_ << fmt::format("\n{}; --connections all lists them\n",
                               text::counted(rows.size() - listed.size(),
                                             "other parameter without findings",
                                             "other parameters without findings"));
        }
    }

    const Report& report_;
    const systems::CheckedSystem& checked_;
    bool colour_;
    std::ostream& os_;
};

} // namespace

bool isListed(const ConnectionRow& row, ConnectionChoice choice) {
    switch (choice) {
    case ConnectionChoice::All:
        return true;
    case ConnectionChoice::Converted:
        return row.effects != std::vector{Effect::Same};
    case ConnectionChoice::Findings:
        return std::ranges::any_of(row.codes, [](findings::Code code) {
            return findings::ruleOf(code).severity != Severity::Note;
        });
    default:
        return false;
    }
}

std::size_t countFindings(const systems::CheckedSystem& checked, Severity severity) {
    std::size_t count = 0;
    for (const ssp::File* const file : checked.files()) {
        count += file->findings.count(severity);
    }
    return count;
}

std::string summaryText(const systems::CheckedSystem& checked, const std::string& file) {
    const ssp::SystemFile& system = checked.package->systems.front();
    const systems::Counts& counts = checked.counts;
    const std::string start = fmt::format("{}: SSP {}, system \"{}\": ", text::safeText(file),
                                          text::safeText(text::shortened(system.version)),
                                          text::safeText(text::shortened(system.name)));
    std::string list;
    const auto append = [&](std::size_t count, const char* one, const char* many) {
        if (count > 0) {
            list += (list.empty() ? "" : ", ") + text::counted(count, one, many);
        }
    };
    append(counts.systems, "system", "systems");
    append(counts.components, "component", "components");
    append(counts.connectors, "connector", "connectors");
    append(counts.connections, "connection", "connections");
    append(counts.parameters, "parameter", "parameters");
    return fmt::format("{}{}; {}", start, list,
                       findings::countsText(countFindings(checked, Severity::Error),
                                            countFindings(checked, Severity::Warning),
                                            countFindings(checked, Severity::Note)));
}

std::string effectText(const ConnectionRow& row) {
    std::string text;
    for (const Effect effect : row.effects) {
        text += text.empty() ? "" : ", ";
        switch (effect) {
        case Effect::Converted:
            text += systems::conversionText({systems::UnitRelation::Converted,
                                             row.factor.value_or(1),
                                             row.offset.value_or(0),
                                             {}});
            break;
        case Effect::Transformed:
            text +=
                fmt::format("then {}", systems::conversionText({systems::UnitRelation::Converted,
                                                                row.record->transformation.factor,
                                                                row.record->transformation.offset,
                                                                {}}));
            break;
        case Effect::MayOverflow:
            text += "may overflow";
            break;
        default:
            text += systems::effectName(effect);
        }
    }
    return text.starts_with("then ") ? text.substr(5) : text;
}

void printFindings(const systems::CheckedSystem& checked, bool showsAll, bool colour,
                   std::ostream& os) {
    findings::TextPrinter printer({colour, showsAll}, os);
    for (const ssp::File* const file : checked.files()) {
        printer.print(file->findings.all(), file->path);
    }
}

void printText(const Report& report, bool colour, std::ostream& os) {
    TextReport(report, colour, os).print();
}

} // namespace tvtool::systemreport
