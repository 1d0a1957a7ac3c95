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

Expansion meaningOf(const fmi::BaseUnit& base) {
    return {powersOf(base), exact::Number(base.factor), exact::Number(base.offset), nullptr};
}

/// Descriptions have no base unit of memory.
Powers comparable(Powers powers) {
    powers.erase("b");
    return powers;
}

Powers inverseOf(Powers powers) {
    for (auto& [symbol, power] : powers) {
        power = -power;
    }
    return powers;
}

/// Rounded, but not as much as what is compared.
std::string decimal(const exact::Number& number) {
    return fmt::format("{:.10g}", static_cast<double>(number));
}

/// One sentence a difference in the numbers. Gives whether there is none.
class NumberCheck {
  public:
    NumberCheck(std::string subject, const fmi::Place& place, fmi::Remarks& remarks)
        : subject_(std::move(subject)), place_(place), remarks_(remarks) {}

    void compare(const char* what, double given, double absent, const exact::Number& expected) {
        if (exact::areClose(exact::Number(given), expected, tolerance)) {
            return;
        }
        isRight_ = false;
        remarks_.problem(place_, given == absent
                                     ? fmt::format("{} has no {}; by its name it has {}", subject_,
                                                   what, decimal(expected))
                                     : fmt::format("{} has the {} {}; by its name it has {}",
                                                   subject_, what, given, decimal(expected)));
    }
    bool isRight() const { return isRight_; }

  private:
    std::string subject_;
    const fmi::Place& place_;
    fmi::Remarks& remarks_;
    bool isRight_ = true;
};

void checkDisplayUnit(const fmi::DisplayUnit& display, const fmi::UnitDefinition& definition,
                      const Expansion& meaning, fmi::Remarks& remarks) {
    const NamedMeaning named = meaningOfName(display.name);
    const std::string subject = fmt::format(
        "display unit {} of unit {}", text::quoted(display.name), text::quoted(definition.name));
    if (!named.meaning) {
        remarks.note(display.place, fmt::format("{} is not known, and not looked at", subject));
        return;
    }
    const Powers shown = comparable(named.meaning->powers);
    const Powers own = comparable(meaning.powers);
    const Powers expected = display.isInverse ? inverseOf(own) : own;
    if (shown != expected) {
        remarks.problem(display.place,
                        fmt::format("{} measures {} by its name, and not {}", subject,
                                    units::productText(shown), units::productText(expected)));
        return;
    }
    NumberCheck check(subject, display.place, remarks);
    if (display.isInverse) {
        check.compare("factor", display.factor, 1,
                      1 / exact::Number(meaning.factor * named.meaning->factor));
        return;
    }
    const units::Conversion conversion = units::conversionBetween(meaning, *named.meaning);
    check.compare("factor", display.factor, 1, conversion.factor);
    check.compare("offset", display.offset, 0, conversion.offset);
}

} // namespace

NamedMeaning meaningOfName(std::string_view name) {
    try {
        const units::Reading reading = units::readUnit(name);
        NamedMeaning named{units::expandExpression(reading.expression), reading.isAsWritten, {}};
        if (named.meaning && reading.factor == 1) {
            named.expression = reading.expression;
        } else if (named.meaning) {
            named.meaning->factor *= reading.factor;
        }
        return named;
    } catch (const text::ParseError&) {
        return {};
    }
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

std::string textOf(const fmi::BaseUnit& base) {
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
    const Powers given = powersOf(*definition.base);
    const Powers expected = comparable(named.meaning->powers);
    const std::string subject = fmt::format("unit {}", text::quoted(definition.name));
    if (given != expected) {
        remarks.problem(definition.place,
                        fmt::format("{} measures {} by its name, and not {}", subject,
                                    units::productText(expected), units::productText(given)));
        return false;
    }
    NumberCheck check(subject, definition.place, remarks);
    check.compare("factor", definition.base->factor, 1, named.meaning->factor);
    check.compare("offset", definition.base->offset, 0, named.meaning->offset);
    return check.isRight();
}

void checkDisplayUnits(const fmi::UnitDefinition& definition, const NamedMeaning& named,
                       fmi::Remarks& remarks) {
    const std::optional<Expansion> meaning =
        definition.base ? std::optional(meaningOf(*definition.base)) : named.meaning;
    if (!meaning) {
        return;
    }
    for (const fmi::DisplayUnit& display : definition.displayUnits) {
        checkDisplayUnit(display, definition, *meaning, remarks);
    }
}

} // namespace tvtool::model
