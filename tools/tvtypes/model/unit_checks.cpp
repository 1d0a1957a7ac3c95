#include "model/unit_checks.h"

#include "text/quote.h"
#include "units/alternatives.h"
#include "units/reading.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <utility>

namespace tvtool::model {

namespace {

using findings::Code;
using findings::SubjectKind;
using text::quoted;
using units::Expansion;
using Powers = std::map<std::string, std::int64_t>;

/// Longer names are not interpreted: the memory for that is a multiple of their length.
constexpr std::size_t longestName = 1'000;

constexpr double tolerance = 1e-6;
/// For the inverse of a factor, which is often written with few digits.
constexpr double inverseTolerance = 1e-3;

/// Removes the unit of memory, which descriptions have no base unit for.
Powers withoutMemory(Powers powers) {
    powers.erase("b");
    return powers;
}

/// Returns the difference between two products; empty if there is none.
std::string powersDifference(const Powers& byName, const Powers& other) {
    return byName == other ? ""
                           : fmt::format("measures {} by its name, and not {}",
                                         units::productText(byName), units::productText(other));
}

/// Returns whether a number is another one rounded to its digits, which are at least six.
bool isRounded(double given, double value) {
    constexpr int fewestDigits = 6;
    // Of the shortest decimal that is the same double.
    const std::string text = fmt::format("{}", given);
    const std::string_view decimal = std::string_view(text).substr(0, text.find('e'));
    const std::size_t first = std::min(decimal.find_first_of("123456789"), decimal.size());
    const auto count = static_cast<int>(
        std::ranges::count_if(decimal.substr(first), [](char c) { return c >= '0' && c <= '9'; }));
    return count >= fewestDigits &&
           fmt::format("{:.{}e}", value, count - 1) == fmt::format("{:.{}e}", given, count - 1);
}

/// Returns the difference between a number and that of the name; empty if there is none.
std::string numberDifference(const char* kind, double given, double absent,
                             const exact::Number& byName) {
    if (exact::areClose(exact::Number(given), byName, tolerance) ||
        isRounded(given, static_cast<double>(byName))) {
        return {};
    }
    return fmt::format("has {}; by its name it has {:.10g}",
                       given == absent ? fmt::format("no {}", kind)
                                       : fmt::format("the {} {}", kind, given),
                       static_cast<double>(byName));
}

struct Difference {
    Code code;
    std::string text;
};
using Differences = std::vector<Difference>;

Differences differences(std::initializer_list<Difference> found) {
    Differences all(found);
    std::erase_if(all, [](const Difference& difference) { return difference.text.empty(); });
    return all;
}

/// Returns the differences between the numbers of a description and those of a name.
Differences numberDifferences(double factor, double offset, const exact::Number& factorByName,
                              const exact::Number& offsetByName) {
    return differences({{Code::UnitFactor, numberDifference("factor", factor, 1, factorByName)},
                        {Code::UnitOffset, numberDifference("offset", offset, 0, offsetByName)}});
}

Differences baseDifferences(const exchange::BaseUnit& base, const Expansion& meaning) {
    if (std::string powers = powersDifference(withoutMemory(meaning.powers), powersOf(base));
        !powers.empty()) {
        return {{Code::UnitDimension, std::move(powers)}};
    }
    return numberDifferences(base.factor, base.offset, meaning.factor, meaning.offset);
}

Differences displayDifferences(const exchange::DisplayUnit& display, const Expansion& unit,
                               const Expansion& meaning) {
    Powers expected = withoutMemory(unit.powers);
    for (auto& [symbol, power] : expected) {
        power = display.isInverse ? -power : power;
    }
    if (std::string powers = powersDifference(withoutMemory(meaning.powers), expected);
        !powers.empty()) {
        return {{Code::UnitDimension, std::move(powers)}};
    }
    if (display.isInverse) {
        return differences({{Code::UnitFactor,
                             numberDifference("factor", display.factor, 1,
                                              1 / exact::Number(unit.factor * meaning.factor))}});
    }
    const auto conversion = units::conversionBetween(unit, meaning);
    Differences found =
        numberDifferences(display.factor, display.offset, conversion.factor, conversion.offset);
    const bool isInverse =
        conversion.factor != 1 &&
        exact::areClose(exact::Number(display.factor) * conversion.factor, 1, inverseTolerance);
    if (isInverse && !found.empty() && found.front().code == Code::UnitFactor) {
        found.front() = {Code::UnitFactorInverse,
                         fmt::format("has the factor {}, the inverse of the right one, which is {}",
                                     display.factor, static_cast<double>(conversion.factor))};
    }
    return found;
}

/// A unit or a display unit of a description.
struct Checked {
    std::string text;
    findings::Subject subject;
    const exchange::Place& place;
};

NamedMeaning meaningOf(const units::Reading& reading) {
    NamedMeaning named{
        units::expandExpression(reading.expression),
        reading.isAsWritten,
        {reading.notes.begin() + (reading.isAsWritten || reading.notes.empty() ? 0 : 1),
         reading.notes.end()},
        {}};
    if (named.meaning && reading.factor == 1) {
        named.expression = reading.expression;
    } else if (named.meaning) {
        named.meaning->factor *= reading.factor;
    }
    return named;
}

/// Compares a unit with the meaning of its name. If they differ, looks for another meaning of an
/// ambiguous name, which then replaces the usual one. Returns whether there is no problem.
template <class Compare>
bool checkMeaning(const Checked& checked, NamedMeaning& named, findings::Findings& findings,
                  Compare compare) {
    const Differences found = named.meaning ? compare(*named.meaning) : Differences();
    if (named.meaning && found.empty()) {
        return true;
    }
    if (checked.subject.name.size() > longestName) {
        return true;
    }
    for (const units::Alternative& alternative : units::alternativeReadings(checked.subject.name)) {
        NamedMeaning other = meaningOf(alternative.reading);
        if (!other.meaning) {
            continue;
        }
        other.meaning->offset += alternative.offset;
        if (compare(*other.meaning).empty()) {
            const exact::Number& number = alternative.reading.factor;
            findings.add(Code::UnitAmbiguous, checked.place, checked.subject,
                         "{} is ambiguous: its numbers are those of {}{}{}{}", checked.text,
                         number == 1 ? "" : fmt::format("{} * ", exact::fractionText(number)),
                         alternative.reading.expression,
                         alternative.usualMeaning.empty() ? "" : "; by its name it is ",
                         alternative.usualMeaning);
            other.isAsWritten = false;
            other.expression = alternative.offset == 0 ? other.expression : "";
            named = std::move(other);
            return true;
        }
    }
    for (const Difference& difference : found) {
        findings.add(difference.code, checked.place, checked.subject, "{} {}", checked.text,
                     difference.text);
    }
    return found.empty();
}

void checkDisplayUnit(const exchange::DisplayUnit& display,
                      const exchange::UnitDefinition& definition, const Expansion& unit,
                      findings::Findings& findings) {
    NamedMeaning named = meaningOfName(display.name);
    const Checked checked{
        fmt::format("display unit {} of unit {}", quoted(display.name), quoted(definition.name)),
        {SubjectKind::DisplayUnit, display.name},
        display.place};
    checkMeaning(checked, named, findings, [&](const Expansion& meaning) {
        return displayDifferences(display, unit, meaning);
    });
    if (!named.meaning) {
        findings.add(Code::UnitUnknown, display.place, checked.subject, "{} {}, and not looked at",
                     checked.text, unknownText(named));
    }
}

} // namespace

NamedMeaning meaningOfName(std::string_view name) {
    if (name.size() > longestName) {
        return {{}, false, {fmt::format("it is longer than {} bytes", longestName)}, {}};
    }
    try {
        return meaningOf(units::readUnit(name));
    } catch (const units::UnknownUnit&) {
        return {};
    } catch (const text::ParseError& error) {
        return {{}, false, {error.what()}, {}};
    }
}

std::string unknownText(const NamedMeaning& named) {
    return named.reasons.empty() ? "is not known"
                                 : fmt::format("is not read ({})", named.reasons.front());
}

Powers powersOf(const exchange::BaseUnit& base) {
    Powers powers;
    for (std::size_t i = 0; i + 1 < base.powers.size(); ++i) {
        if (base.powers[i] != 0) {
            powers.emplace(exchange::baseUnitNames[i], base.powers[i]);
        }
    }
    return powers;
}

std::string baseUnitText(const exchange::BaseUnit& base) {
    Powers powers = powersOf(base);
    if (base.powers.back() != 0) {
        powers.emplace(exchange::baseUnitNames.back(), base.powers.back());
    }
    std::string text = units::productText(powers);
    if (base.factor != 1) {
        text = powers.empty() ? fmt::format("{}", base.factor)
                              : fmt::format("{} * {}", base.factor, text);
    }
    return base.offset == 0
               ? text
               : fmt::format("{} {} {}", text, base.offset < 0 ? '-' : '+', std::abs(base.offset));
}

bool checkUnit(const exchange::UnitDefinition& definition, NamedMeaning& named,
               findings::Findings& findings) {
    if (!definition.base) {
        return true;
    }
    const Checked checked{fmt::format("unit {}", quoted(definition.name)),
                          {SubjectKind::Unit, definition.name},
                          definition.place};
    return checkMeaning(checked, named, findings, [&](const Expansion& meaning) {
        return baseDifferences(*definition.base, meaning);
    });
}

void checkDisplayUnits(const exchange::UnitDefinition& definition, const NamedMeaning& named,
                       findings::Findings& findings) {
    std::optional<Expansion> meaning = named.meaning;
    if (const std::optional<exchange::BaseUnit>& base = definition.base) {
        meaning = Expansion{powersOf(*base), exact::Number(base->factor),
                            exact::Number(base->offset), nullptr};
    }
    if (meaning) {
        for (const exchange::DisplayUnit& display : definition.displayUnits) {
            checkDisplayUnit(display, definition, *meaning, findings);
        }
    }
}

} // namespace tvtool::model
