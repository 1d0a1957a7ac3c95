#include "units/expansion.h"

#include "exact/pi.h"
#include "text/utf16.h"
#include "units/definitions.h"
#include "units/reading.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

/// Returns false if the product takes too many digits.
bool multiplyFactor(exact::Number& factor, const exact::Number& by) {
    const std::optional<exact::Number> product = exact::product(factor, by);
    factor = product.value_or(factor);
    return product.has_value();
}

void addPower(Expansion& expansion, const std::string& symbol, std::int64_t power) {
    std::int64_t& sum = expansion.powers[symbol];
    sum += power;
    if (sum == 0) {
        expansion.powers.erase(symbol);
    }
}

void addMeasured(Expansion& expansion, const std::string& digits, const MeasuredPower& constant) {
    MeasuredPower& sum = expansion.measured[digits];
    sum.power += constant.power;
    sum.uncertainty = std::max(sum.uncertainty, constant.uncertainty);
}

/// Returns a text of the odd part without factors of 5, which is the same for all multiples of a
/// number by powers of 2 and 10.
std::string digitsOf(const exact::Number& number) {
    const auto reduced = [](exact::Integer part) {
        for (const unsigned divisor : {2U, 5U}) {
            while (part % divisor == 0) {
                part /= divisor;
            }
        }
        return part.str();
    };
    return reduced(numerator(number)) + '/' + reduced(denominator(number));
}

} // namespace

const std::optional<Expansion>& Expander::expand(const UnitBase& unit) {
    if (const auto known = known_.find(&unit); known != known_.end()) {
        return known->second;
    }
    std::optional<Expansion> expansion = compute(unit);
    return known_.emplace(&unit, std::move(expansion)).first->second;
}

std::optional<Expansion> Expander::compute(const UnitBase& unit) {
    Expansion expansion;
    const bool isFundamental = unit.exprTermMap.empty();
    if (isFundamental) {
        for (const auto& [term, info] : unit.fundamentalExprAST) {
            addPower(expansion, text::toUtf8(term.get().symbol), info.power);
        }
    }
    for (const auto& [term, info] : unit.exprTermMap) {
        if (!multiply(expansion, term.get(), info.power, unit.exprTermMap.size() == 1)) {
            return std::nullopt;
        }
    }
    // The offset is in the unit of the expression.
    expansion.offset += expansion.factor * exactValue(unit.offset);
    exact::Number scaling = exactValue(unit.scaling);
    // The names of composite units have operators, so that they are not those of a definition.
    if (const std::optional<Definition> definition = definitions().find(unit.name)) {
        scaling = definition->factor;
        expansion.piPower += definition->piPower;
        if (definition->uncertainty > 0) {
            addMeasured(expansion, digitsOf(scaling), {1, definition->uncertainty});
        }
    }
    return multiplyFactor(expansion.factor, scaling) ? std::optional(expansion) : std::nullopt;
}

bool Expander::multiply(Expansion& expansion, const UnitBase& term, std::int64_t power,
                        bool isAlone) {
    const std::optional<Expansion>& part = expand(term);
    const std::optional<exact::Number> raised =
        part ? exact::power(part->factor, power) : std::nullopt;
    if (!raised || !multiplyFactor(expansion.factor, *raised)) {
        return false;
    }
    for (const auto& [symbol, own] : part->powers) {
        addPower(expansion, symbol, own * power);
    }
    expansion.piPower += part->piPower * power;
    for (const auto& [digits, constant] : part->measured) {
        addMeasured(expansion, digits, {constant.power * power, constant.uncertainty});
    }
    if (isAlone && power == 1) {
        expansion.offset = part->offset;
        expansion.offsetInProduct = part->offsetInProduct;
    } else if (part->offset != 0) {
        expansion.offsetInProduct = &term;
    } else if (part->offsetInProduct != nullptr) {
        expansion.offsetInProduct = part->offsetInProduct;
    }
    return true;
}

exact::Number exactValue(const TVTypeSys::Rational& number) {
    return exact::Number(number.numerator(), number.denominator()) *
           exact::powerOfTen(number.exponent());
}

std::optional<Expansion> expand(const UnitBase& unit) { return Expander().expand(unit); }

std::optional<Expansion> expandExpression(const std::string& expression) {
    if (expression == unitless) {
        return Expansion();
    }
    using namespace TVTypeSys;
    const std::unique_ptr<Unit> unit(
        UnitFactory::createUnit(text::toUtf16(expression), Rational::unity, Rational::zero,
                                UnitFactory::getDefaultAbstractUnit()));
    try {
        unit->parseExpressionAndGenerateAST();
    } catch (const boost::bad_rational&) {
        return std::nullopt;
    }
    return expand(*unit);
}

std::string productText(const std::map<std::string, std::int64_t>& powers) {
    std::string numerator;
    std::string denominator;
    for (const auto& [symbol, power] : powers) {
        std::string& part = power > 0 ? numerator : denominator;
        const std::int64_t size = power < 0 ? -power : power;
        part += (part.empty() ? "" : "*") + symbol + (size == 1 ? "" : fmt::format("^{}", size));
    }
    numerator = numerator.empty() ? "1" : numerator;
    if (denominator.empty()) {
        return numerator;
    }
    return denominator.find('*') == std::string::npos
               ? fmt::format("{}/{}", numerator, denominator)
               : fmt::format("{}/({})", numerator, denominator);
}

Conversion conversionBetween(const Expansion& from, const Expansion& to) {
    Expansion quotient;
    for (const auto& [expansion, sign] : {std::pair(&from, 1), std::pair(&to, -1)}) {
        for (const auto& [digits, constant] : expansion->measured) {
            addMeasured(quotient, digits, {sign * constant.power, constant.uncertainty});
        }
    }
    Conversion conversion{from.factor / to.factor, (from.offset - to.offset) / to.factor,
                          from.piPower - to.piPower, 0};
    // The sum is an upper bound, since measured constants are correlated.
    for (const auto& [digits, constant] : quotient.measured) {
        conversion.uncertainty +=
            std::abs(static_cast<double>(constant.power)) * constant.uncertainty;
    }
    return conversion;
}

std::string Conversion::text() const {
    std::string text =
        factor == 1 ? "x" : fmt::format("{} * x", exact::multipleOfPiText(factor, piPower));
    if (offset != 0) {
        text += fmt::format(" {} {}", offset < 0 ? '-' : '+', exact::fractionText(abs(offset)));
    }
    return text;
}

} // namespace tvtool::units
