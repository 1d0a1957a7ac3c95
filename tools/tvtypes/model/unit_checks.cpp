#include "model/unit_checks.h"

#include "text/quote.h"
#include "units/reading.h"

#include <fmt/format.h>

#include <cmath>
#include <cstddef>

namespace tvtool::model {

namespace {

using text::quoted;
using units::Expansion;
using Powers = std::map<std::string, std::int64_t>;

constexpr double tolerance = 1e-6;

/// Removes the unit of memory, which descriptions have no base unit for.
Powers withoutMemory(Powers powers) {
    powers.erase("b");
    return powers;
}

/// Compares a unit or a display unit with its name.
class Comparison {
  public:
    Comparison(std::string subject, const fmi::Place& place, fmi::Remarks& remarks)
        : subject_(std::move(subject)), place_(place), remarks_(remarks) {}

    bool comparePowers(const Powers& byName, const Powers& other) const {
        if (byName != other) {
            remarks_.problem(place_, "{} measures {} by its name, and not {}", subject_,
                             units::productText(byName), units::productText(other));
        }
        return byName == other;
    }

    bool compareNumber(const char* kind, double given, double absent,
                       const exact::Number& byName) const {
        if (exact::areClose(exact::Number(given), byName, tolerance)) {
            return true;
        }
        remarks_.problem(place_, "{} has {}; by its name it has {:.10g}", subject_,
                         given == absent ? fmt::format("no {}", kind)
                                         : fmt::format("the {} {}", kind, given),
                         static_cast<double>(byName));
        return false;
    }

    bool compareNumbers(double factor, double offset, const exact::Number& factorByName,
                        const exact::Number& offsetByName) const {
        const bool isFactorRight = compareNumber("factor", factor, 1, factorByName);
        return compareNumber("offset", offset, 0, offsetByName) && isFactorRight;
    }

  private:
    std::string subject_;
    const fmi::Place& place_;
    fmi::Remarks& remarks_;
};

void checkDisplayUnit(const fmi::DisplayUnit& display, const fmi::UnitDefinition& definition,
                      const Expansion& meaning, fmi::Remarks& remarks) {
    const NamedMeaning named = meaningOfName(display.name);
    const std::string subject =
        fmt::format("display unit {} of unit {}", quoted(display.name), quoted(definition.name));
    if (!named.meaning) {
        remarks.note(display.place, "{} is not known, and not looked at", subject);
        return;
    }
    Powers expected = withoutMemory(meaning.powers);
    for (auto& [symbol, power] : expected) {
        power = display.isInverse ? -power : power;
    }
    const Comparison comparison(subject, display.place, remarks);
    if (!comparison.comparePowers(withoutMemory(named.meaning->powers), expected)) {
        return;
    }
    if (display.isInverse) {
        comparison.compareNumber("factor", display.factor, 1,
                                 1 / exact::Number(meaning.factor * named.meaning->factor));
    } else {
        const auto conversion = units::conversionBetween(meaning, *named.meaning);
        comparison.compareNumbers(display.factor, display.offset, conversion.factor,
                                  conversion.offset);
    }
}

} // namespace

NamedMeaning meaningOfName(std::string_view name) {
    units::Reading reading;
    try {
        reading = units::readUnit(name);
    } catch (const text::ParseError&) {
        return {};
    }
    NamedMeaning named{units::expandExpression(reading.expression), reading.isAsWritten, {}};
    if (named.meaning && reading.factor == 1) {
        named.expression = reading.expression;
    } else if (named.meaning) {
        named.meaning->factor *= reading.factor;
    }
    return named;
}

Powers powersOf(const fmi::BaseUnit& base) {
    Powers powers;
    for (std::size_t i = 0; i + 1 < base.powers.size(); ++i) {
        if (base.powers[i] != 0) {
            powers.emplace(fmi::baseUnitNames[i], base.powers[i]);
        }
    }
    return powers;
}

std::string baseUnitText(const fmi::BaseUnit& base) {
    Powers powers = powersOf(base);
    if (base.powers.back() != 0) {
        powers.emplace(fmi::baseUnitNames.back(), base.powers.back());
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

bool checkUnit(const fmi::UnitDefinition& definition, const NamedMeaning& named,
               fmi::Remarks& remarks) {
    if (!named.meaning || !definition.base) {
        return true;
    }
    const fmi::BaseUnit& base = *definition.base;
    const Comparison comparison(fmt::format("unit {}", quoted(definition.name)), definition.place,
                                remarks);
    return comparison.comparePowers(withoutMemory(named.meaning->powers), powersOf(base)) &&
           comparison.compareNumbers(base.factor, base.offset, named.meaning->factor,
                                     named.meaning->offset);
}

void checkDisplayUnits(const fmi::UnitDefinition& definition, const NamedMeaning& named,
                       fmi::Remarks& remarks) {
    std::optional<Expansion> meaning = named.meaning;
    if (const std::optional<fmi::BaseUnit>& base = definition.base) {
        meaning = Expansion{powersOf(*base), exact::Number(base->factor),
                            exact::Number(base->offset), nullptr};
    }
    if (meaning) {
        for (const fmi::DisplayUnit& display : definition.displayUnits) {
            checkDisplayUnit(display, definition, *meaning, remarks);
        }
    }
}

} // namespace tvtool::model
