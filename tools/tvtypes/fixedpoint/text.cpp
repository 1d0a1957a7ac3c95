#include "fixedpoint/text.h"

#include "output/table.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/color.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string_view>

namespace tvtool::fixedpoint {

namespace {

fmt::text_style headingStyle(bool colour) {
    return colour ? fmt::text_style(fmt::emphasis::bold) : fmt::text_style();
}

void printLine(const char* label, const std::string& text, std::ostream& os) {
    if (!text.empty()) {
        os << fmt::format("  {:<12}  {}\n", label, text);
    }
}

const char* pluralEnding(std::int32_t count) { return count == 1 ? "" : "s"; }

std::string kindOf(const FixptSheet& sheet) {
    const fxpDataTypeProp& record = sheet.record;
    const char* const signedness = record.Signedness == 0   ? "unsigned, "
                                   : record.Signedness == 1 ? "signed, "
                                                            : "signedness open, ";
    return fmt::format("{}, {}{} bit{}", sheet.kind, sheet.slope.empty() ? "" : signedness,
                       record.WordLength, pluralEnding(record.WordLength));
}

std::string identifierOf(const FixptSheet& sheet) {
    const bool hasAnother =
        !sheet.fixedPointName.empty() && sheet.fixedPointName != sheet.identifier;
    return hasAnother
               ? fmt::format("{}, as a fixed-point type {}", sheet.identifier, sheet.fixedPointName)
               : sheet.identifier;
}

std::string recordOf(const fxpDataTypeProp& record) {
    return fmt::format("{}, signedness {}, word length {}, exponent {}, factor {}, bias {}, "
                       "override state {}",
                       fxpDtpGetClassName(&record),
                       record.Signedness > 1    ? "[]"
                       : record.Signedness == 1 ? "1"
                                                : "0",
                       record.WordLength, record.FixedExponent, slopeAdjustmentFactorStr(record),
                       biasStr(record), record.DataTypeOverrideState);
}

std::string textOf(const FixptRange& range) {
    return range.lowest.empty() ? "" : fmt::format("{} to {}", range.lowest, range.highest);
}

struct Form {
    std::string text;
    std::vector<std::string> scalings;
};

/// Each text once, with the ways of giving the scaling in which it comes.
std::vector<Form> formsOf(const std::vector<FixptConstructor>& constructors) {
    std::vector<Form> forms;
    for (const FixptConstructor& constructor : constructors) {
        auto form = std::ranges::find(forms, constructor.text, &Form::text);
        if (form == forms.end()) {
            form = forms.insert(form, {constructor.text, {}});
        }
        if (std::ranges::find(form->scalings, constructor.scaling) == form->scalings.end()) {
            form->scalings.emplace_back(constructor.scaling);
        }
    }
    return forms;
}

void printConstructors(const std::vector<FixptConstructor>& constructors, std::ostream& os) {
    constexpr std::size_t allScalings = 3;
    const std::vector<Form> forms = formsOf(constructors);
    const std::size_t width = std::ranges::max_element(forms, {}, [](const Form& form) {
                                  return form.text.size();
                              })->text.size();
    const char* label = "constructors";
    for (const Form& form : forms) {
        const bool isAlone = form.scalings.size() == allScalings;
        printLine(label,
                  isAlone
                      ? form.text
                      : fmt::format("{:<{}}  {}", form.text, width, fmt::join(form.scalings, ", ")),
                  os);
        label = "";
    }
}

void printSheet(const FixptSheet& sheet, fmt::text_style style, std::ostream& os) {
    constexpr std::size_t longest = 200;
    const std::string& heading = sheet.text.empty() ? sheet.identifier : sheet.text;
    os << fmt::format(style, "{}", text::safeText(text::shortened(heading, longest))) << '\n';
    printLine("kind", kindOf(sheet), os);
    printLine("slope", sheet.slope, os);
    printLine("bias", sheet.slope.empty() ? "" : biasStr(sheet.record), os);
    printLine("resolution", sheet.range.resolution, os);
    printLine("range", textOf(sheet.range), os);
    if (!sheet.storage.empty()) {
        printLine("storage",
                  fmt::format("{}, {} byte{}", sheet.storage, sheet.storageSize,
                              pluralEnding(sheet.storageSize)),
                  os);
    }
    printLine("atomic", sheet.isAtomic ? "yes" : "no", os);
    printLine("identifier", identifierOf(sheet), os);
    printConstructors(sheet.constructors, os);
    printLine("record", recordOf(sheet.record), os);
    for (const std::string& note : sheet.notes) {
        printLine("note", text::safeText(note), os);
    }
}

/// Rows that differ in nothing but the rounding, as one.
struct Outcome {
    QuantizedRow row;
    std::vector<std::string> roundings;
};

std::vector<Outcome> outcomesOf(const QuantizedValue& value) {
    std::vector<Outcome> outcomes;
    for (const QuantizedRow& row : value.rows) {
        auto outcome = std::ranges::find_if(outcomes, [&](const Outcome& other) {
            return other.row.stored == row.stored && other.row.error == row.error &&
                   std::string_view(other.row.overflow) == row.overflow;
        });
        if (outcome == outcomes.end()) {
            outcome = outcomes.insert(outcome, {row, {}});
        }
        outcome->roundings.emplace_back(row.rounding);
    }
    return outcomes;
}

std::string roundingsOf(const Outcome& outcome, const QuantizedValue& value) {
    if (outcome.roundings.size() < value.rows.size()) {
        return fmt::format("{}", fmt::join(outcome.roundings, ", "));
    }
    return outcome.row.error == "0" ? "exact" : "all roundings";
}

bool overflows(const QuantizedValue& value) {
    return std::ranges::any_of(value.rows,
                               [](const QuantizedRow& row) { return *row.overflow != '\0'; });
}

} // namespace

void printText(const std::vector<FixptSheet>& sheets, bool colour, std::ostream& os) {
    bool isFirst = true;
    for (const FixptSheet& sheet : sheets) {
        os << (isFirst ? "" : "\n");
        printSheet(sheet, headingStyle(colour), os);
        isFirst = false;
    }
}

void printText(const FixptQuantization& quantization, bool colour, std::ostream& os) {
    constexpr std::size_t longest = 40;
    os << fmt::format("{}: {}, resolution {}\n\n", quantization.identifier,
                      textOf(quantization.range), quantization.range.resolution);
    const bool showsOverflow = std::ranges::any_of(quantization.values, overflows);
    output::Table table;
    table.addColumn("value", output::Align::Right);
    table.addColumn("rounding", output::Align::Left);
    for (const char* const heading : {"stored", "stands for", "error"}) {
        table.addColumn(heading, output::Align::Right);
    }
    if (showsOverflow) {
        table.addColumn("overflow", output::Align::Left);
    }
    for (const QuantizedValue& value : quantization.values) {
        for (const Outcome& outcome : outcomesOf(value)) {
            const QuantizedRow& row = outcome.row;
            std::vector<std::string> cells{text::safeText(text::shortened(value.text, longest)),
                                           roundingsOf(outcome, value), row.stored, row.value,
                                           row.error};
            if (showsOverflow) {
                cells.emplace_back(row.overflow);
            }
            table.addRow(std::move(cells));
        }
    }
    table.print(os, headingStyle(colour));
}

} // namespace tvtool::fixedpoint
