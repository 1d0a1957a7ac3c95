#include "units/report.h"

#include "findings/json.h"
#include "output/columns.h"

#include <fmt/format.h>

#include <string_view>

namespace tvtool::units {

namespace {

using findings::Code;
using findings::Findings;
using findings::SubjectKind;
using output::none;
using Detail = output::Column<UnitDetails>;

/// The longest text, in bytes, that is shown in full, because units may have any length.
constexpr std::size_t longest = 200;

std::string shown(const std::string& text) {
    return text::safeText(text::shortened(text, longest));
}

std::string factorText(const UnitDetails& unit) {
    if (!unit.factor) {
        return "of more digits than are computed";
    }
    // The uncertainty follows the unit.
    ShownNumber factor = *unit.factor;
    const std::string uncertainty = factor.uncertaintyText();
    factor.uncertainty.reset();
    return fmt::format("{} to {}{}", shown(factor.text()), shown(unit.base), uncertainty);
}

std::string convertibleText(const UnitDetails& unit) {
    std::string text;
    for (const ConvertibleUnit& other : unit.convertible) {
        text += (text.empty() ? "" : ", ") + text::safeText(other.text);
    }
    const std::size_t more = unit.convertibleCount - unit.convertible.size();
    return text + (more > 0 ? fmt::format(" and {} more", more) : "");
}

std::vector<std::string> convertibleNames(const UnitDetails& unit) {
    std::vector<std::string> names;
    for (const ConvertibleUnit& other : unit.convertible) {
        names.push_back(other.name);
    }
    return names;
}

/// Returns a function for a column: a member of a number, or null without the number.
template <class Row, class Member>
auto memberOf(std::optional<ShownNumber> Row::*number, Member ShownNumber::*member) {
    return [number, member](const Row& row) {
        const std::optional<ShownNumber>& value = row.*number;
        return value ? output::jsonValue((*value).*member) : boost::json::value(nullptr);
    };
}

const output::Columns<ConvertibleUnit> convertibleColumns{
    {none, "name", &ConvertibleUnit::name},
    {none, "symbol", &ConvertibleUnit::symbol},
    {none, "factor", &ConvertibleUnit::factor},
    {none, "exact", &ConvertibleUnit::exact},
    {none, "conversion", &ConvertibleUnit::conversion},
};

const output::Columns<UnitDetails> detailColumns{
    {none, "text", [](const UnitDetails& unit) { return boost::json::value(unit.text); }},
    {none, "expression", &UnitDetails::expression}, // notes have it where it is not the text
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
    Detail("factor", "factor", memberOf(&UnitDetails::factor, &ShownNumber::exact))
        .shownAs(factorText),
    {none, "factorDecimal", memberOf(&UnitDetails::factor, &ShownNumber::decimal)},
    {none, "rounded", memberOf(&UnitDetails::factor, &ShownNumber::isRounded)},
    {none, "uncertainty", memberOf(&UnitDetails::factor, &ShownNumber::uncertainty)},
    {none, "libraryFactor", &UnitDetails::libraryFactor},
    Detail("conversion", "conversion", &UnitDetails::conversion)
        .shownAs([](const UnitDetails& unit) {
            return unit.conversion.empty() ? ""
                                           : fmt::format("{} = {}", unit.base, unit.conversion);
        }),
    {"systems", "systems", &UnitDetails::systems},
    Detail("converts to", "convertible", convertibleNames).shownAs(convertibleText),
    {none, "conversions", output::rowsOf(&UnitDetails::convertible, convertibleColumns)},
    {none, "convertibleCount", &UnitDetails::convertibleCount},
    {none, "notes", [](const UnitDetails& unit) { return allNotes(unit.notes, unit.libraryNote); }},
};

const output::Columns<UnitFactor> factorColumns{
    {none, "from", &UnitFactor::from},
    {none, "to", &UnitFactor::to},
    {none, "factor", &UnitFactor::factor},
    {none, "exact", memberOf(&UnitFactor::own, &ShownNumber::exact)},
    {none, "exactDecimal", memberOf(&UnitFactor::own, &ShownNumber::decimal)},
    {none, "rounded", memberOf(&UnitFactor::own, &ShownNumber::isRounded)},
    {none, "uncertainty", memberOf(&UnitFactor::own, &ShownNumber::uncertainty)},
    {none, "differs", &UnitFactor::differs},
    {none, "wrong", &UnitFactor::isWrong},
    {none, "conversion", &UnitFactor::conversion},
    {none, "reason", &UnitFactor::reason},
    {none, "notes",
     [](const UnitFactor& factor) { return allNotes(factor.notes, factor.libraryNote); }},
};

const output::Columns<ValueConversion> conversionColumns{
    {none, "from", &ValueConversion::from},
    {none, "to", &ValueConversion::to},
    {none, "difference",
     [](const ValueConversion& conversion) { return conversion.values() == Values::Differences; }},
    {none, "reason",
     [](const ValueConversion& conversion) {
         return conversion.exists() ? "" : conversion.reason();
     }},
    {none, "notes",
     [](const ValueConversion& conversion) {
         return allNotes(conversion.notes(), conversion.libraryNote());
     }},
};

const output::Columns<ConvertedValue> valueColumns{
    {none, "value", &ConvertedValue::value},
    {none, "result", [](const ConvertedValue& value) { return value.result.decimal; }},
    {none, "digits", [](const ConvertedValue& value) { return value.result.digits; }},
    {none, "exact", [](const ConvertedValue& value) { return value.result.exact; }},
    {none, "rounded", [](const ConvertedValue& value) { return value.result.isRounded; }},
    {none, "uncertainty", [](const ConvertedValue& value) { return value.result.uncertainty; }},
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

/// Adds the notes about the unit with this text; it is empty where they are about one of two units.
void addFindings(const std::string& text, const std::vector<std::string>& notes,
                 const std::string& libraryNote, Findings& found) {
    const findings::Subject subject{SubjectKind::Unit, text};
    for (const std::string& note : notes) {
        found.add(Code::UnitReading, {}, subject, "{}", note);
    }
    if (!libraryNote.empty()) {
        found.add(Code::UnitFactorInexact, {}, subject, "{}", libraryNote);
    }
}

boost::json::array conversionFindings(const ValueConversion& conversion) {
    Findings found;
    addFindings({}, conversion.notes(), conversion.libraryNote(), found);
    if (!conversion.exists()) {
        found.add(Code::ConversionMissing, {}, {SubjectKind::Unit}, "{}", conversion.reason());
    }
    found.sort();
    return findings::jsonArray(found.all());
}

std::string headingText(const UnitDetails& unit) {
    if (unit.name.empty()) {
        return shown(unit.text);
    }
    return text::safeText(unit.symbol.empty() ? unit.name
                                              : fmt::format("{} ({})", unit.name, unit.symbol));
}

} // namespace

std::vector<std::string> allNotes(std::vector<std::string> notes, const std::string& libraryNote) {
    if (!libraryNote.empty()) {
        notes.push_back(libraryNote);
    }
    return notes;
}

void printText(const std::vector<UnitDetails>& units, bool colour, std::ostream& os) {
    const char* separator = "";
    for (const UnitDetails& unit : units) {
        os << separator << fmt::format(output::bold(colour), "{}", headingText(unit)) << '\n';
        output::printFields(unit, detailColumns, os);
        for (const std::string& note : allNotes(unit.notes, unit.libraryNote)) {
            output::printField("note", text::safeText(note), os);
        }
        separator = "\n";
    }
}

void printJson(const std::vector<UnitDetails>& units, std::ostream& os) {
    Findings found;
    for (const UnitDetails& unit : units) {
        addFindings(unit.text, unit.notes, unit.libraryNote, found);
    }
    found.sort();
    output::printJson("unit",
                      {{"units", output::jsonArray(units, detailColumns)},
                       {"findings", findings::jsonArray(found.all())}},
                      os);
}

void printText(const UnitFactor& factor, bool /*colour*/, std::ostream& os) {
    if (factor.own) {
        os << shown(factor.own->text()) << '\n';
    } else if (factor.factor) {
        os << fmt::format("about {}\n", *factor.factor);
    } else {
        constexpr std::size_t longestReason = 1000;
        os << "no factor: " << text::safeText(text::shortened(factor.reason, longestReason))
           << '\n';
    }
}

void printJson(const UnitFactor& factor, std::ostream& os) {
    Findings found;
    addFindings({}, factor.notes, factor.libraryNote, found);
    if (!factor.factor) {
        found.add(Code::ConversionMissing, {}, {SubjectKind::Unit}, "{}", factor.reason);
    }
    found.sort();
    boost::json::object object = output::jsonObject(factor, factorColumns);
    object.emplace("findings", findings::jsonArray(found.all()));
    output::printJson("unit", std::move(object), os);
}

void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os) {
    output::printList(lines, lineColumns, "no units", output::bold(colour), os);
}

void printJson(const std::vector<UnitLine>& lines, std::ostream& os) {
    output::printJson("unit", {{"units", output::jsonArray(lines, lineColumns)}}, os);
}

void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os) {
    output::printList(words, wordColumns, "no words", output::bold(colour), os);
}

void printJson(const std::vector<UnitWord>& words, std::ostream& os) {
    output::printJson("unit", {{"words", output::jsonArray(words, wordColumns)}}, os);
}

ConversionReport::ConversionReport(const ValueConversion& conversion, bool isJson, std::ostream& os)
    : conversion_(conversion), isJson_(isJson), os_(os) {
    if (isJson_) {
        std::string object = output::jsonText(
            output::envelope("unit", output::jsonObject(conversion, conversionColumns)));
        object.pop_back();
        os_ << object << ",\"values\":[";
    }
}

void ConversionReport::add(const ConvertedValue& value) {
    if (isJson_) {
        os_ << separator_ << output::jsonText(output::jsonObject(value, valueColumns));
        separator_ = ",";
        return;
    }
    const auto withUnit = [](const std::string& number, const std::string& unit) {
        return unit.empty() ? number : fmt::format("{} {}", number, shown(unit));
    };
    os_ << fmt::format("{} = {}{}{}\n", withUnit(value.value, conversion_.from()),
                       withUnit(value.result.decimalText(), conversion_.to()),
                       conversion_.values() == Values::Differences ? " (difference)" : "",
                       value.result.uncertaintyText());
}

void ConversionReport::finish(const output::Failure* failure) {
    if (isJson_) {
        os_ << "],\"findings\":" << output::jsonText(conversionFindings(conversion_))
            << (failure == nullptr
                    ? ""
                    : ",\"error\":" + output::jsonText(output::failureObject(*failure)))
            << "}\n";
    }
}

} // namespace tvtool::units
