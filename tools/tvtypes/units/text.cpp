#include "units/text.h"

#include "output/table.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/color.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvtool::units {

namespace {

fmt::text_style headingStyle(bool colour) {
    return colour ? fmt::text_style(fmt::emphasis::bold) : fmt::text_style();
}

/// A unit may be written in any length.
std::string shown(const std::string& text) {
    constexpr std::size_t longest = 200;
    return text::safeText(text::shortened(text, longest));
}

std::string joined(const std::vector<std::string>& texts) {
    return text::safeText(fmt::format("{}", fmt::join(texts, ", ")));
}

void printLine(const char* label, const std::string& text, std::ostream& os) {
    if (!text.empty()) {
        os << fmt::format("  {:<12}  {}\n", label, text);
    }
}

std::string headingOf(const UnitSheet& sheet) {
    if (sheet.name.empty()) {
        return shown(sheet.text);
    }
    std::string heading = text::safeText(sheet.name);
    if (!sheet.symbol.empty()) {
        heading += fmt::format(" ({})", text::safeText(sheet.symbol));
    }
    return heading;
}

std::string factorOf(const UnitSheet& sheet) {
    if (sheet.factor.empty()) {
        return "of more digits than are computed";
    }
    const bool isDecimal = sheet.factor.find_first_of("/*^") == std::string::npos;
    const std::string decimal =
        isDecimal ? "" : fmt::format(" = {}", sheet.factorDecimal.value_or(0));
    return fmt::format("{}{} to {}", shown(sheet.factor), decimal, shown(sheet.base));
}

std::string convertibleOf(const UnitSheet& sheet) {
    const std::size_t more = sheet.convertibleCount - sheet.convertible.size();
    return joined(sheet.convertible) + (more > 0 ? fmt::format(" and {} more", more) : "");
}

void printSheet(const UnitSheet& sheet, fmt::text_style style, std::ostream& os) {
    os << fmt::format(style, "{}", headingOf(sheet)) << '\n';
    if (sheet.expression != sheet.text) {
        printLine("read as", shown(sheet.expression), os);
    }
    printLine("shown as", sheet.display == sheet.symbol ? "" : text::safeText(sheet.display), os);
    printLine("aliases", joined(sheet.aliases), os);
    printLine("quantity", text::safeText(sheet.quantity), os);
    printLine("definition", shown(sheet.definition), os);
    printLine("canonical", sheet.canonical.empty() ? "no dimension" : shown(sheet.canonical), os);
    printLine("factor", factorOf(sheet), os);
    if (!sheet.conversion.empty()) {
        printLine("conversion", fmt::format("{} = {}", sheet.base, sheet.conversion), os);
    }
    printLine("systems", joined(sheet.systems), os);
    printLine("converts to", convertibleOf(sheet), os);
    for (const std::string& note : sheet.notes) {
        printLine("note", text::safeText(note), os);
    }
}

} // namespace

void printText(const std::vector<UnitSheet>& sheets, bool colour, std::ostream& os) {
    bool isFirst = true;
    for (const UnitSheet& sheet : sheets) {
        os << (isFirst ? "" : "\n");
        printSheet(sheet, headingStyle(colour), os);
        isFirst = false;
    }
}

void printText(const UnitFactor& factor, std::ostream& os) {
    if (!factor.factor) {
        constexpr std::size_t longest = 1000;
        os << "no factor: " << text::safeText(text::shortened(factor.reason, longest)) << '\n';
        return;
    }
    const std::string decimal = fmt::format("{}", *factor.factor);
    os << decimal;
    if (!factor.exact.empty() && factor.exact != decimal) {
        os << fmt::format(" ({}{})", factor.differs ? "exactly " : "", shown(factor.exact));
    }
    os << '\n';
}

void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os) {
    if (lines.empty()) {
        os << "no units\n";
        return;
    }
    output::Table table;
    for (const char* const heading : {"name", "symbol", "quantity", "definition", "systems"}) {
        table.addColumn(heading, output::Align::Left);
    }
    for (const UnitLine& line : lines) {
        table.addRow({text::safeText(line.name), text::safeText(line.symbol),
                      text::safeText(line.quantity), text::safeText(line.definition),
                      joined(line.systems)});
    }
    table.print(os, headingStyle(colour));
}

void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os) {
    if (words.empty()) {
        os << "no words\n";
        return;
    }
    output::Table table;
    for (const char* const heading : {"word", "is", "of"}) {
        table.addColumn(heading, output::Align::Left);
    }
    for (const UnitWord& word : words) {
        const char* const article = word.kind == std::string_view("alias") ? "an alias" : word.kind;
        table.addRow({text::safeText(word.word), article, text::safeText(word.unit)});
    }
    table.print(os, headingStyle(colour));
}

} // namespace tvtool::units
