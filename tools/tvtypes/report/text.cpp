// The report of an inspection as text.
#include "findings/text.h"
#include "dims/fact_columns.h"
#include "output/columns.h"
#include "output/shortening.h"
#include "report/inspection.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace tvtool::report {

namespace {

using output::Column;
using output::Columns;
using output::none;

/// The longest text of a cell that is not a name, in bytes.
constexpr std::size_t longestCell = 40;
/// The narrowest columns of names, lists of names and descriptions.
constexpr std::size_t narrowestName = 20;
constexpr std::size_t narrowestList = 16;
constexpr std::size_t narrowestDescription = 20;

/// Some of the rows of a list.
template <class Row>
struct SelectedRows {
    std::vector<const Row*> rows;

    std::size_t size() const { return rows.size(); }
    const Row& operator[](std::size_t row) const { return *rows[row]; }
};

/// Returns a column with the names of the users of each row.
template <class Row, class NameOf>
Column<Row> usersColumn(const Inspection& inspection, NameOf nameOf) {
    return Column<Row>("used by", none, [](const Row& row) { return row.users.size(); })
        .alignedLeft()
        .ifAny()
        .atLeast(narrowestList)
        .fittedAs([&inspection, nameOf](const Row& row, std::size_t width) {
            return output::nameList(
                row.users.size(),
                [&](std::size_t i, std::string& name) {
                    name += text::safeText(nameOf(inspection, row, row.users[i]));
                },
                width);
        });
}

template <class Row>
Column<Row> variablesColumn(const Inspection& inspection) {
    return usersColumn<Row>(inspection,
                            [](const Inspection& all, const Row&, std::uint32_t variable) {
                                return all.variableName(variable);
                            });
}

/// Returns a text in one line: a description may have several.
std::string singleLine(std::string_view text) {
    if (text::isPrintableAscii(text) && text.find("  ") == std::string_view::npos) {
        return std::string(text);
    }
    std::string line;
    bool isGap = false;
    for (const char c : text) {
        const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (!isBlank) {
            line += isGap && !line.empty() ? " " : "";
            line += c;
        }
        isGap = isBlank;
    }
    return text::safeText(line);
}

/// Returns the unit, and the display unit after it if that is another.
std::string unitText(std::string_view unit, std::string_view displayUnit) {
    return displayUnit.empty() || displayUnit == unit ? std::string(unit)
                                                      : fmt::format("{} ({})", unit, displayUnit);
}

/// Returns what the heading of the section does not say of the causality.
std::string_view causalityText(const VariableRow& row) {
    switch (causalityOf(row.record())) {
    case fmi::Causality::StructuralParameter:
        return "structural";
    case fmi::Causality::CalculatedParameter:
        return "calculated";
    case fmi::Causality::Independent:
        return row.causality();
    default:
        return {};
    }
}

/// Returns a column of numbers as they are written.
template <class Row, class Function>
Column<Row> writtenNumber(const char* heading, Function value) {
    return Column<Row>(heading, none, value)
        .shortenedTo(longestCell)
        .alignedRight()
        .shrunkLast()
        .ifAny();
}

/// Returns a column of texts that may have several lines.
template <class Row, class Function>
Column<Row> descriptionColumn(Function description) {
    return Column<Row>("description", none, description)
        .shownAs(
            [description](const Row& row) { return singleLine(std::invoke(description, row)); })
        .ifAny()
        .atLeast(narrowestDescription);
}

const Columns<VariableRow>& variableColumns() {
    static const Columns<VariableRow> columns{
        Column<VariableRow>("name", none, &VariableRow::name).atLeast(narrowestName),
        Column<VariableRow>("causality", none, causalityText).ifAny().omittedAt(4),
        {"type", none, &VariableRow::type},
        Column<VariableRow>(
            "unit", none,
            [](const VariableRow& row) { return unitText(row.unit(), row.displayUnit()); })
            .ifAny(),
        Column<VariableRow>("dimensions", none, &VariableRow::dimensions)
            .shortenedTo(longestCell)
            .ifAny(),
        writtenNumber<VariableRow>("start", &VariableRow::start),
        writtenNumber<VariableRow>("min", &VariableRow::min).omittedAt(1),
        writtenNumber<VariableRow>("max", &VariableRow::max).omittedAt(2),
        descriptionColumn<VariableRow>(&VariableRow::description).omittedAt(3),
    };
    return columns;
}

std::string_view definitionText(const TypeRow& type,
                                std::string_view fmi::TypeDefinition::*member) {
    return type.definition == nullptr ? std::string_view() : type.definition->*member;
}

/// Returns a function that returns an attribute of the declaration of a type.
auto ofDefinition(std::string_view fmi::TypeDefinition::*member) {
    return [member](const TypeRow& type) { return definitionText(type, member); };
}

/// Prints the sections of a report.
class TextReport {
  public:
    TextReport(const Inspection& inspection, bool colour, std::ostream& os)
        : inspection_(inspection), colour_(colour), os_(os) {}

    void print() {
        output::printWrapped(
            summaryText(inspection_.model, inspection_.file, inspection_.variables), 4, os_);
        printVariables();
        printTypes();
        printOutside();
        printUnits();
        printEnumerations();
        printDimensions();
        printFindings();
    }

  private:
    void printHeading(const char* heading) {
        os_ << '\n' << fmt::format(output::bold(colour_), "{}", heading) << '\n';
    }

    /// Prints a section, or nothing without rows. The column of ids is the first one.
    template <class Rows, class Row>
    void printSection(const char* heading, const Rows& rows, Columns<Row> columns) {
        if (rows.size() == 0) {
            return;
        }
        if (!inspection_.options.showsIds && columns.front().heading() == std::string_view("id")) {
            columns.erase(columns.begin());
        }
        printHeading(heading);
        output::printTable(rows, columns, colour_ ? fmt::emphasis::faint : fmt::text_style(), os_);
    }

    void printVariables() {
        constexpr const char* headings[] = {"Inputs", "Outputs", "Parameters", "Local variables"};
        for (std::size_t i = 0; i < sectionCount; ++i) {
            printSection(headings[i], inspection_.variables.section(static_cast<Section>(i)),
                         variableColumns());
        }
        if (inspection_.variables.unlistedMatches() > 0) {
            os_ << fmt::format(
                "\n{}; --variables all lists {}\n",
                text::counted(inspection_.variables.unlistedMatches(),
                              "variable that is no input, output or parameter matches",
                              "variables that are no inputs, outputs or parameters match"),
                inspection_.variables.unlistedMatches() == 1 ? "it" : "them");
        }
    }

    void printTypes() {
        SelectedRows<TypeRow> plain;
        SelectedRows<TypeRow> structs;
        for (const TypeRow& row : inspection_.types) {
            // Built-in types are there for the aliases of them as well.
            if (row.isStruct()) {
                structs.rows.push_back(&row);
            } else if (row.variables > 0 || row.kind != std::string_view("built-in")) {
                plain.rows.push_back(&row);
            }
        }
        const Column<TypeRow> users = usersColumn<TypeRow>(
            inspection_, [](const Inspection& all, const TypeRow& type, std::uint32_t user) {
                return all.userName(type, user);
            });
        printSection(
            "Types", plain,
            Columns<TypeRow>{
                {"id", none, &TypeRow::id},
                Column<TypeRow>("name", none, declaredName).atLeast(narrowestName),
                Column<TypeRow>("registered as", none,
                                [this](const TypeRow& row) {
                                    return inspection_.options.showsIds && !row.originalName.empty()
                                               ? std::string_view(row.name)
                                               : std::string_view();
                                })
                    .ifAny(),
                {"kind", none, &TypeRow::kind},
                {"size", none, &TypeRow::size},
                // The storage of the others is in their names.
                Column<TypeRow>("storage", none,
                                [](const TypeRow& row) {
                                    return row.storage == row.name || row.storage == row.aliasOf
                                               ? std::string_view()
                                               : std::string_view(row.storage);
                                })
                    .ifAny()
                    .omittedAt(4),
                Column<TypeRow>("alias of", none, &TypeRow::aliasOf).ifAny().omittedAt(3),
                Column<TypeRow>("unit", none, [this](const TypeRow& row) { return unitOf(row); })
                    .ifAny()
                    .omittedAt(1),
                writtenNumber<TypeRow>("min", ofDefinition(&fmi::TypeDefinition::min)).omittedAt(5),
                writtenNumber<TypeRow>("max", ofDefinition(&fmi::TypeDefinition::max)).omittedAt(5),
                {"variables", none, &TypeRow::variables},
                Column<TypeRow>(users).omittedAt(2),
                descriptionColumn<TypeRow>(ofDefinition(&fmi::TypeDefinition::description))
                    .omittedAt(6),
            });
        printSection("Structs", structs,
                     Columns<TypeRow>{
                         {"id", none, &TypeRow::id},
                         Column<TypeRow>("name", none, &TypeRow::name).atLeast(narrowestName),
                         {"size", none, &TypeRow::size},
                         {"elements", none, &TypeRow::elements},
                         {"leaves", none, &TypeRow::leaves},
                         {"variables", none, &TypeRow::variables},
                         users,
                     });
    }

    static std::string_view declaredName(const TypeRow& type) {
        return type.originalName.empty() ? type.name : type.originalName;
    }

    std::string unitOf(const TypeRow& type) const {
        if (type.definition == nullptr || type.definition->unitUse == exchange::noIndex) {
            return {};
        }
        const fmi::UnitUse& use = inspection_.description().unitUses[type.definition->unitUse];
        return unitText(use.unit, use.displayUnit);
    }

    void printOutside() {
        std::string list;
        for (const OutsideRow& row : inspection_.outside) {
            list += fmt::format("{}{} {}", list.empty() ? "" : ", ", row.baseType,
                                text::counted(row.variables, "variable", "variables"));
            if (row.types > 0) {
                list += " and " + text::counted(row.types, "type", "types");
            }
        }
        if (!list.empty()) {
            os_ << '\n';
            output::printWrapped("Outside the table: " + list, 4, os_);
        }
    }

    void printUnits() {
        printSection(
            "Units", inspection_.units,
            Columns<UnitRow>{
                {"id", none, &UnitRow::id},
                Column<UnitRow>("unit", none,
                                [](const UnitRow& row) { return row.definition->name; })
                    .shortenedTo(longestCell),
                Column<UnitRow>("expression", none,
                                [](const UnitRow& row) {
                                    return isReadAsWritten(row) ? std::string_view()
                                                                : row.expression;
                                })
                    .shortenedTo(longestCell)
                    .ifAny(),
                Column<UnitRow>("from", none,
                                [](const UnitRow& row) {
                                    return isReadAsWritten(row) ? std::string_view() : row.source;
                                })
                    .ifAny()
                    .omittedAt(3),
                Column<UnitRow>("base units", none, &UnitRow::baseUnits).ifAny().omittedAt(2),
                Column<UnitRow>("display units", none, displayUnitNames).ifAny().omittedAt(1),
                {"variables", none, [](const UnitRow& row) { return row.users.size(); }},
                variablesColumn<UnitRow>(inspection_),
            });
    }

    /// Returns whether the library has the unit under its own name.
    static bool isReadAsWritten(const UnitRow& row) {
        return row.expression == row.definition->name;
    }

    static std::string displayUnitNames(const UnitRow& row) {
        const auto& units = row.definition->displayUnits;
        return output::nameList(
            units.size(), [&units](std::size_t i, std::string& name) { name += units[i].name; },
            longestCell);
    }

    void printEnumerations() {
        SelectedRows<fmi::TypeDefinition> enumerations;
        for (const fmi::TypeDefinition& type : inspection_.description().types) {
            if (!type.items.empty()) {
                enumerations.rows.push_back(&type);
            }
        }
        using Row = fmi::TypeDefinition;
        printSection(
            "Enumerations", enumerations,
            Columns<Row>{
                {"name", none, &Row::name},
                Column<Row>("items", none, [](const Row& type) { return type.items.size(); })
                    .alignedLeft()
                    .fittedAs(itemList),
            });
    }

    static std::string itemList(const fmi::TypeDefinition& type, std::size_t width) {
        return output::nameList(
            type.items.size(),
            [&type](std::size_t i, std::string& text) {
                const exchange::Item& item = type.items[i];
                text += text::safeText(item.name) +
                        (item.value ? fmt::format(" = {}", *item.value) : "");
            },
            std::min(width, widestItems), mostItems);
    }

    void printDimensions() {
        printSection(
            "Dimensions", inspection_.dimensions,
            Columns<DimensionRow>{
                {"id", none, &DimensionRow::id},
                Column<DimensionRow>("dimensions", none, &DimensionRow::text)
                    .shortenedTo(longestCell),
                {"variables", none, [](const DimensionRow& row) { return row.users.size(); }},
                variablesColumn<DimensionRow>(inspection_),
            });
        printSection("Facts", inspection_.facts, dims::factColumns);
    }

    void printFindings() {
        const findings::Findings& all = inspection_.model.findings;
        if (!all.all().empty()) {
            printHeading("Findings");
            findings::TextPrinter({colour_, inspection_.options.showsAllFindings}, os_)
                .print(all.all(), inspection_.file);
        }
    }

    static constexpr std::size_t widestItems = 200;
    static constexpr std::size_t mostItems = 20;

    const Inspection& inspection_;
    const bool colour_;
    std::ostream& os_;
};

} // namespace

void printText(const Inspection& inspection, bool colour, std::ostream& os) {
    TextReport(inspection, colour, os).print();
}

} // namespace tvtool::report
