#include "units/expansion.h"

#include "text/utf16.h"
#include "units/reading.h"

#include <fmt/format.h>

#include <memory>
#include <unordered_map>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

/// Expands units recursively. Memoised, because units share their parts.
class Expander {
  public:
    const std::optional<Expansion>& expand(const UnitBase& unit) {
        if (const auto known = known_.find(&unit); known != known_.end()) {
            return known->second;
        }
        std::optional<Expansion> expansion = compute(unit);
        return known_.emplace(&unit, std::move(expansion)).first->second;
    }

  private:
    std::optional<Expansion> compute(const UnitBase& unit) {
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
        return multiply(expansion.factor, exactValue(unit.scaling)) ? std::optional(expansion)
                                                                    : std::nullopt;
    }

    /// Returns false if the product takes too many digits.
    static bool multiply(exact::Number& factor, const exact::Number& by) {
        const std::optional<exact::Number> product = exact::product(factor, by);
        factor = product.value_or(factor);
        return product.has_value();
    }

    bool multiply(Expansion& expansion, const UnitBase& term, std::int64_t power, bool isAlone) {
        const std::optional<Expansion>& part = expand(term);
        const std::optional<exact::Number> raised =
            part ? exact::power(part->factor, power) : std::nullopt;
        if (!raised || !multiply(expansion.factor, *raised)) {
            return false;
        }
        for (const auto& [symbol, own] : part->powers) {
            addPower(expansion, symbol, own * power);
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

    static void addPower(Expansion& expansion, const std::string& symbol, std::int64_t power) {
        std::int64_t& sum = expansion.powers[symbol];
        sum += power;
        if (sum == 0) {
            expansion.powers.erase(symbol);
        }
    }

    std::unordered_map<const UnitBase*, std::optional<Expansion>> known_;
};

} // namespace

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
    return {from.factor / to.factor, (from.offset - to.offset) / to.factor};
}

std::string Conversion::text() const {
    std::string text = factor == 1 ? "x" : fmt::format("{} * x", exact::fractionText(factor));
    if (offset != 0) {
        text += fmt::format(" {} {}", offset < 0 ? '-' : '+', exact::fractionText(abs(offset)));
    }
    return text;
}

} // namespace tvtool::units
