#include "units/report.h"

#include "output/columns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

namespace tvtool::units {

namespace {

using output::none;
using Detail = output::Column<UnitDetails>;

/// The longest text, in bytes, that is shown in full, because units may have any length.
constexpr std::size_t longest = 200;

std::string shown(const std::string& text) {
    return text::safeText(text::shortened(text, longest));
}

std::string factorText(const UnitDetails& unit) {
    if (unit.factor.empty()) {
        return "of more digits than are computed";
    }
    const bool isDecimal = unit.factor.find_first_of("/*^") == std::string::npos;
    const std::string decimal =
        isDecimal ? "" : fmt::format(" = {}", unit.factorDecimal.value_or(0));
    return fmt::format("{}{} to {}", shown(unit.factor), decimal, shown(unit.base));
}

std::string convertibleText(const UnitDetails& unit) {
    const std::size_t more = unit.convertibleCount - unit.convertible.size();
    return text::safeText(fmt::format("{}", fmt::join(unit.convertible, ", "))) +
           (more > 0 ? fmt::format(" and {} more", more) : "");
}

const output::Columns<UnitDetails> detailColumns{
    {none, "text", [](const UnitDetails& unit) { return boost::json::value(unit.text); }},
    Detail("read as", "expression", &UnitDetails::expression).shownAs([](const UnitDetails& unit) {
        return unit.expression == unit.text ? "" : shown(unit.expression);
    }),
    {none, "name", &UnitDetails::name},
    {none, "symbol", &UnitDetails::symbol},
    Detail("shown as", "display", &UnitDetails::display).shownAs([](const UnitDetails& unit) {
        return unit.display == unit.symbol ? "" : text::safeText(unit.display);
    }),
    {"aliases", "aliases", &UnitDetails::aliases},
    {"quantity", none, &UnitDetails::quantity},
    Detail("definition", "definition", &UnitDetails::definition).shortenedTo(longest),
    {none, "quantity", &UnitDetails::quantity},
    Detail("canonical", "canonical", &UnitDetails::canonical).shownAs([](const UnitDetails& unit) {
        return unit.canonical.empty() ? "no dimension" : shown(unit.canonical);
    }),
    {none, "base", &UnitDetails::base},
    Detail("factor", "factor", &UnitDetails::factor).shownAs(factorText),
    {none, "factorDecimal", &UnitDetails::factorDecimal},
    Detail("conversion", "conversion", &UnitDetails::conversion)
        .shownAs([](const UnitDetails& unit) {
            return unit.conversion.empty() ? ""
                                           : fmt::format("{} = {}", unit.base, unit.conversion);
        }),
    {"systems", "systems", &UnitDetails::systems},
    Detail("converts to", "convertible", &UnitDetails::convertible).shownAs(convertibleText),
    {none, "convertibleCount", &UnitDetails::convertibleCount},
    {none, "notes", &UnitDetails::notes},
};

const output::Columns<UnitFactor> factorColumns{
    {none, "from", &UnitFactor::from},
    {none, "to", &UnitFactor::to},
    {none, "factor", &UnitFactor::factor},
    {none, "exact", &UnitFactor::exact},
    {none, "exactDecimal", &UnitFactor::exactDecimal},
    {none, "differs", &UnitFactor::differs},
    {none, "conversion", &UnitFactor::conversion},
    {none, "reason", &UnitFactor::reason},
};

const output::Columns<UnitLine> lineColumns{
    {"name", "name", &UnitLine::name},
    {"symbol", "symbol", &UnitLine::symbol},
    {"quantity", "quantity", &UnitLine::quantity},
    {"definition", "definition", &UnitLine::definition},
    {"systems", "systems", &UnitLine::systems},
};

const output::Columns<UnitWord> wordColumns{
    {"word", "word", &UnitWord::word},
    output::Column<UnitWord>("is", "kind", &UnitWord::kind).shownAs([](const UnitWord& word) {
        return word.kind == std::string_view("alias") ? "an alias" : word.kind;
    }),
    {"of", "unit", &UnitWord::unit},
};

std::string headingText(const UnitDetails& unit) {
    if (unit.name.empty()) {
        return shown(unit.text);
    }
    return text::safeText(unit.symbol.empty() ? unit.name
                                              : fmt::format("{} ({})", unit.name, unit.symbol));
}

} // namespace

void printText(const std::vector<UnitDetails>& units, bool colour, std::ostream& os) {
    const char* separator = "";
    for (const UnitDetails& unit : units) {
        os << separator << fmt::format(output::bold(colour), "{}", headingText(unit)) << '\n';
        output::printFields(unit, detailColumns, os);
        for (const std::string& note : unit.notes) {
            output::printField("note", text::safeText(note), os);
        }
        separator = "\n";
    }
}

void printJson(const std::vector<UnitDetails>& units, std::ostream& os) {
    output::printJson({{"units", output::jsonArray(units, detailColumns)}}, os);
}

void printText(const UnitFactor& factor, bool /*colour*/, std::ostream& os) {
    if (!factor.factor) {
        constexpr std::size_t longestReason = 1000;
        os << "no factor: " << text::safeText(text::shortened(factor.reason, longestReason))
           << '\n';
        return;
    }
    const std::string decimal = fmt::format("{}", *factor.factor);
    os << decimal;
    if (!factor.exact.empty() && factor.exact != decimal) {
        os << fmt::format(" ({}{})", factor.differs ? "exactly " : "", shown(factor.exact));
    }
    os << '\n';
}

void printJson(const UnitFactor& factor, std::ostream& os) {
    output::printJson(output::jsonObject(factor, factorColumns), os);
}

void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os) {
    output::printList(lines, lineColumns, "no units", output::bold(colour), os);
}

void printJson(const std::vector<UnitLine>& lines, std::ostream& os) {
    output::printJson({{"units", output::jsonArray(lines, lineColumns)}}, os);
}

void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os) {
    output::printList(words, wordColumns, "no words", output::bold(colour), os);
}

void printJson(const std::vector<UnitWord>& words, std::ostream& os) {
    output::printJson({{"words", output::jsonArray(words, wordColumns)}}, os);
}

} // namespace tvtool::units
