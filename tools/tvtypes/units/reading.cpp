#include "units/reading.h"

#include "text/quote.h"
#include "text/utf16.h"
#include "units/conventions.h"
#include "units/mistakable.h"
#include "units/name_reading.h"
#include "units/spelling.h"
#include "units/spelling_reader.h"
#include "units/unit_names.h"

#include <tvtypes/units.h>

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

/// Returns whether the library accepts a text as an expression. It does not accept "unitless".
bool isExpression(std::string_view text) { return UnitBase::isValidUnitExpr(text::toUtf16(text)); }

/// Returns the product of the numbers in an expression. The library skips numbers before a /, and
/// takes those that are names, or begin one, for units.
exact::Number expressionFactor(std::string_view text) {
    Monomial terms;
    const bool hasNumberAsName = parseUnitExpr(text::toUtf16(text), terms) &&
                                 std::ranges::any_of(terms.names, [](const std::u16string& name) {
                                     return name.front() >= u'0' && name.front() <= u'9';
                                 });
    try {
        return hasNumberAsName ? exact::Number(1) : parseSpelling(text).factor;
    } catch (const text::ParseError&) {
        return 1;
    }
}

/// Returns a text without blanks.
std::string withoutBlanks(std::string_view text) {
    std::string rest;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        UChar32 character = -1;
        U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), i, text.size(), character);
        if (character < 0 || u_isUWhiteSpace(character) == 0) {
            rest += text.substr(begin, i - begin);
        }
    }
    return rest;
}

/// Returns a text without blanks at its ends.
std::string_view trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return begin == text.size() ? std::string_view() : text.substr(begin, end + 1 - begin);
}

/// Adds the sentence that says what was read.
Reading withNote(std::string_view text, Reading reading) {
    const std::string number =
        reading.factor == 1 ? "" : fmt::format("{} * ", exact::fractionText(reading.factor));
    reading.notes.insert(reading.notes.begin(),
                         fmt::format("{} is read as {}{}", text::quoted(text), number,
                                     text::shortened(reading.expression)));
    return reading;
}

Reading readConvention(std::string_view text, const Convention& convention) {
    if (convention.reading.empty()) {
        throw text::ParseError(std::string(convention.sentence), std::string(text), 0);
    }
    Reading reading{std::string(convention.reading), false, 1, {}};
    if (!convention.sentence.empty()) {
        reading.notes.emplace_back(convention.sentence);
    }
    return withNote(text, std::move(reading));
}

/// Rejects levels with their reference, and powers of ten as medical units write them.
void checkBeginning(std::string_view text, std::string_view trimmedText) {
    if (trimmedText.starts_with("dB re")) {
        throw text::ParseError(reasonAgainstQualifier("dB", trimmedText.substr(3)),
                               std::string(text), 0);
    }
    constexpr std::string_view ten = "10*";
    if (trimmedText.starts_with(ten) && trimmedText.size() > ten.size() &&
        trimmedText[ten.size()] >= '0' && trimmedText[ten.size()] <= '9') {
        throw text::ParseError("10*3 is 30; a power of ten is written 10^3", std::string(text), 0);
    }
}

/// Returns the reading of an expression of the library; empty for another text.
std::optional<Reading> readExpression(std::string_view text) {
    constexpr std::size_t longestMistakable = 200;
    if (text == unitless) {
        return Reading{unitless, true, 1, {}};
    }
    std::string expression = withoutBlanks(text);
    if (!isExpression(text) || !isExpression(expression)) {
        return std::nullopt;
    }
    if (const Convention* const convention = overridingConvention(expression)) {
        return readConvention(text, *convention);
    }
    Reading reading{std::move(expression), true, expressionFactor(text), {}};
    Monomial terms;
    if (text.size() <= longestMistakable && parseUnitExpr(text::toUtf16(text), terms)) {
        if (isMistakable(terms, reading.notes)) {
            return std::nullopt;
        }
        noteTemperatureAfterDivisor(text, reading.notes);
    }
    return reading;
}

Reading readAny(std::string_view text) {
    if (std::optional<Reading> reading = readExpression(text)) {
        return *std::move(reading);
    }
    const std::string_view trimmedText = trimmed(text);
    if (std::string name = findUnitName(trimmedText);
        !name.empty() && readExpression(name).has_value()) {
        return withNote(text, {std::move(name), false, 1, {}});
    }
    if (const Convention* const convention = conventionOfText(trimmedText)) {
        return readConvention(text, *convention);
    }
    checkBeginning(text, trimmedText);
    return withNote(text, readSpelling(text));
}

} // namespace

Reading readUnit(std::string_view text) {
    Reading reading = readAny(text);
    if (reading.factor == 0) {
        throw text::ParseError("zero times a unit is not a unit", std::string(text), 0);
    }
    return reading;
}

} // namespace tvtool::units
