#include "fixedpoint/report.h"

#include "output/columns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string_view>

namespace tvtool::fixedpoint {

namespace {

using output::none;
using Detail = output::Column<TypeDetails>;

const char* pluralEnding(std::int32_t count) { return count == 1 ? "" : "s"; }

std::string kindText(const TypeDetails& type) {
    const char* const signedness = type.record.Signedness == 0   ? "unsigned, "
                                   : type.record.Signedness == 1 ? "signed, "
                                                                 : "signedness open, ";
    return fmt::format("{}, {}{} bit{}", type.kind, type.slope.empty() ? "" : signedness,
                       type.record.WordLength, pluralEnding(type.record.WordLength));
}

std::string biasText(const TypeDetails& type) {
    return type.slope.empty() ? "" : biasStr(type.record);
}

std::string storageText(const TypeDetails& type) {
    return type.storage.empty() ? ""
                                : fmt::format("{}, {} byte{}", type.storage, type.storageSize,
                                              pluralEnding(type.storageSize));
}

std::string identifierText(const TypeDetails& type) {
    const bool hasAnother = !type.fixedPointName.empty() && type.fixedPointName != type.identifier;
    return hasAnother
               ? fmt::format("{}, as a fixed-point type {}", type.identifier, type.fixedPointName)
               : type.identifier;
}

std::string recordText(const TypeDetails& type) {
    const fxpDataTypeProp& record = type.record;
    return fmt::format("{}, signedness {}, word length {}, exponent {}, factor {}, bias {}, "
                       "override state {}",
                       fxpDtpGetClassName(&record),
                       record.Signedness > 1    ? "[]"
                       : record.Signedness == 1 ? "1"
                                                : "0",
                       record.WordLength, record.FixedExponent, slopeAdjustmentFactorStr(record),
                       biasStr(record), record.DataTypeOverrideState);
}

std::optional<int> signedness(const TypeDetails& type) {
    return type.record.Signedness > 1 ? std::nullopt : std::optional<int>(type.record.Signedness);
}

std::optional<int> storageSize(const TypeDetails& type) {
    return type.storage.empty() ? std::nullopt : std::optional(type.storageSize);
}

const output::Columns<Constructor> constructorColumns{
    {none, "function", &Constructor::base},
    {none, "scaling", &Constructor::scaling},
    {none, "text", &Constructor::text},
};

const output::Columns<TypeDetails> detailColumns{
    {none, "text", &TypeDetails::text},
    {none, "identifier", &TypeDetails::identifier},
    {none, "fixedPointName", &TypeDetails::fixedPointName},
    Detail("kind", "kind", &TypeDetails::kind).shownAs(kindText),
    {none, "mode", [](const TypeDetails& type) { return fxpDtpGetClassName(&type.record); }},
    {none, "signedness", signedness},
    {none, "wordLength", [](const TypeDetails& type) { return type.record.WordLength; }},
    {none, "fixedExponent", [](const TypeDetails& type) { return type.record.FixedExponent; }},
    {none, "slopeAdjustmentFactor",
     [](const TypeDetails& type) { return type.record.SlopeAdjustmentFactor; }},
    {none, "bias", [](const TypeDetails& type) { return type.record.Bias; }},
    {none, "overrideState",
     [](const TypeDetails& type) { return type.record.DataTypeOverrideState; }},
    {"slope", "slope", &TypeDetails::slope},
    {"bias", none, biasText},
    {"resolution", "resolution", [](const TypeDetails& type) { return type.range.resolution; }},
    {none, "lowest", [](const TypeDetails& type) { return type.range.lowest; }},
    {none, "highest", [](const TypeDetails& type) { return type.range.highest; }},
    {"range", none, [](const TypeDetails& type) { return type.range.text(); }},
    Detail("storage", "storage", &TypeDetails::storage).shownAs(storageText),
    {none, "storageSize", storageSize},
    {"atomic", "atomic", &TypeDetails::isAtomic},
    {"identifier", none, identifierText},
    {none, "constructors", output::rowsOf(&TypeDetails::constructors, constructorColumns)},
    {none, "notes", &TypeDetails::notes},
};

/// Prints each distinct constructor text with the forms of the scaling that give it, unless all do.
void printConstructors(const std::vector<Constructor>& constructors, std::ostream& os) {
    struct Text {
        std::string text;
        std::vector<std::string_view> scalings;
    };
    constexpr std::size_t scalingCount = 3;
    std::vector<Text> texts;
    std::size_t width = 0;
    for (const Constructor& constructor : constructors) {
        auto text = std::ranges::find(texts, constructor.text, &Text::text);
        if (text == texts.end()) {
            text = texts.insert(text, {constructor.text, {}});
            width = std::max(width, constructor.text.size());
        }
        if (std::ranges::find(text->scalings, constructor.scaling) == text->scalings.end()) {
            text->scalings.emplace_back(constructor.scaling);
        }
    }
    const char* label = "constructors";
    for (const auto& [text, scalings] : texts) {
        const std::string line = fmt::format("{:<{}}  {}", text, width, fmt::join(scalings, ", "));
        output::printField(label, scalings.size() == scalingCount ? text : line, os);
        label = "";
    }
}

/// A row of the quantization table: the rounding modes with the same result.
struct Outcome {
    std::string value;
    QuantizedRow row;
    std::vector<std::string> roundings;
    bool hasAllRoundings = false;
};

std::vector<Outcome> outcomes(const std::vector<QuantizedValue>& values) {
    std::vector<Outcome> all;
    for (const QuantizedValue& value : values) {
        const auto first = static_cast<std::ptrdiff_t>(all.size());
        for (const QuantizedRow& row : value.rows) {
            auto outcome = std::find_if(all.begin() + first, all.end(), [&](const Outcome& other) {
                return other.row.stored == row.stored && other.row.error == row.error &&
                       std::string_view(other.row.overflow) == row.overflow;
            });
            if (outcome == all.end()) {
                outcome = all.insert(outcome, {value.text, row, {}, false});
            }
            outcome->roundings.emplace_back(row.rounding);
            outcome->hasAllRoundings = outcome->roundings.size() == value.rows.size();
        }
    }
    return all;
}

std::string roundingText(const Outcome& outcome) {
    if (!outcome.hasAllRoundings) {
        return fmt::format("{}", fmt::join(outcome.roundings, ", "));
    }
    return outcome.row.error == "0" ? "exact" : "all roundings";
}

constexpr std::size_t longestValue = 40;

const output::Columns<Outcome> outcomeColumns{
    output::Column<Outcome>("value", none, &Outcome::value)
        .shortenedTo(longestValue)
        .alignedRight(),
    {"rounding", none, roundingText},
    output::Column<Outcome>("stored", none,
                            [](const Outcome& outcome) { return outcome.row.stored; })
        .alignedRight(),
    output::Column<Outcome>("stands for", none,
                            [](const Outcome& outcome) { return outcome.row.value; })
        .alignedRight(),
    output::Column<Outcome>("error", none, [](const Outcome& outcome) { return outcome.row.error; })
        .alignedRight(),
    output::Column<Outcome>("overflow", none,
                            [](const Outcome& outcome) { return outcome.row.overflow; })
        .ifAny(),
};

const output::Columns<QuantizedRow> rowColumns{
    {none, "rounding", &QuantizedRow::rounding}, {none, "stored", &QuantizedRow::stored},
    {none, "value", &QuantizedRow::value},       {none, "error", &QuantizedRow::error},
    {none, "overflow", &QuantizedRow::overflow},
};

const output::Columns<QuantizedValue> valueColumns{
    {none, "text", &QuantizedValue::text},
    {none, "results", output::rowsOf(&QuantizedValue::rows, rowColumns)},
};

const output::Columns<Quantization> quantizationColumns{
    {none, "identifier", &Quantization::identifier},
    {none, "resolution", [](const Quantization& all) { return all.range.resolution; }},
    {none, "lowest", [](const Quantization& all) { return all.range.lowest; }},
    {none, "highest", [](const Quantization& all) { return all.range.highest; }},
    {none, "values", output::rowsOf(&Quantization::values, valueColumns)},
};

} // namespace

void printText(const std::vector<TypeDetails>& types, bool colour, std::ostream& os) {
    constexpr std::size_t longest = 200;
    const char* separator = "";
    for (const TypeDetails& type : types) {
        const std::string& heading = type.text.empty() ? type.identifier : type.text;
        os << separator
           << fmt::format(output::bold(colour), "{}",
                          text::safeText(text::shortened(heading, longest)))
           << '\n';
        output::printFields(type, detailColumns, os);
        printConstructors(type.constructors, os);
        output::printField("record", recordText(type), os);
        for (const std::string& note : type.notes) {
            output::printField("note", text::safeText(note), os);
        }
        separator = "\n";
    }
}

void printJson(const std::vector<TypeDetails>& types, std::ostream& os) {
    output::printJson("fixpt", {{"types", output::jsonArray(types, detailColumns)}}, os);
}

void printText(const Quantization& quantization, bool colour, std::ostream& os) {
    os << fmt::format("{}: {}, resolution {}\n\n", quantization.identifier,
                      quantization.range.text(), quantization.range.resolution);
    output::printTable(outcomes(quantization.values), outcomeColumns, output::bold(colour), os);
}

void printJson(const Quantization& quantization, std::ostream& os) {
    output::printJson("fixpt", output::jsonObject(quantization, quantizationColumns), os);
}

} // namespace tvtool::fixedpoint
