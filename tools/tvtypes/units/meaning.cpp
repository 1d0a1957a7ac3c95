#include "units/meaning.h"

#include "text/utf16.h"
#include "units/reading.h"

#include <fmt/format.h>

#include <memory>
#include <unordered_map>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

/// Units are made of units, each of which is looked at once.
class Meanings {
  public:
    /// Null if the factor is too long.
    const Meaning* of(const UnitBase& unit) {
        if (const auto known = known_.find(&unit); known != known_.end()) {
            return known->second ? &*known->second : nullptr;
        }
        std::optional<Meaning> meaning = compute(unit);
        const auto& kept = known_.emplace(&unit, std::move(meaning)).first->second;
        return kept ? &*kept : nullptr;
    }

  private:
    std::optional<Meaning> compute(const UnitBase& unit) {
        Meaning meaning;
        const bool isFundamental = unit.exprTermMap.empty();
        if (isFundamental) {
            for (const auto& [term, info] : unit.fundamentalExprAST) {
                addPower(meaning, text::toUtf8(term.get().symbol), info.power);
            }
        }
        for (const auto& [term, info] : unit.exprTermMap) {
            if (!multiply(meaning, term.get(), info.power, unit.exprTermMap.size() == 1)) {
                return std::nullopt;
            }
        }
        // The offset is one in the expression.
        meaning.offset += meaning.factor * exactOf(unit.offset);
        const std::optional<exact::Number> factor =
            exact::product(meaning.factor, exactOf(unit.scaling));
        if (!factor) {
            return std::nullopt;
        }
        meaning.factor = *factor;
        return meaning;
    }

    bool multiply(Meaning& meaning, const UnitBase& term, std::int64_t power, bool isAlone) {
        const Meaning* const of = this->of(term);
        const std::optional<exact::Number> raised =
            of ? exact::power(of->factor, power) : std::nullopt;
        const std::optional<exact::Number> factor =
            raised ? exact::product(meaning.factor, *raised) : std::nullopt;
        if (!factor) {
            return false;
        }
        for (const auto& [symbol, own] : of->powers) {
            addPower(meaning, symbol, own * power);
        }
        meaning.factor = *factor;
        if (isAlone && power == 1) {
            meaning.offset = of->offset;
            meaning.offsetInProduct = of->offsetInProduct;
        } else if (of->offset != 0) {
            meaning.offsetInProduct = &term;
        } else if (of->offsetInProduct != nullptr) {
            meaning.offsetInProduct = of->offsetInProduct;
        }
        return true;
    }

    static void addPower(Meaning& meaning, const std::string& symbol, std::int64_t power) {
        std::int64_t& sum = meaning.powers[symbol];
        sum += power;
        if (sum == 0) {
            meaning.powers.erase(symbol);
        }
    }

    std::unordered_map<const UnitBase*, std::optional<Meaning>> known_;
};

} // namespace

exact::Number exactOf(const TVTypeSys::Rational& number) {
    return exact::Number(number.numerator(), number.denominator()) *
           exact::powerOfTen(number.exponent());
}

std::optional<Meaning> meaningOf(const UnitBase& unit) {
    Meanings meanings;
    const Meaning* const meaning = meanings.of(unit);
    return meaning == nullptr ? std::nullopt : std::optional(*meaning);
}

std::optional<Meaning> meaningOfExpression(const std::string& expression) {
    if (expression == unitless) {
        return Meaning();
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
    return meaningOf(*unit);
}

std::string productText(const std::map<std::string, std::int64_t>& powers) {
    std::string above;
    std::string below;
    std::size_t belowCount = 0;
    for (const auto& [symbol, power] : powers) {
        std::string& part = power > 0 ? above : below;
        belowCount += power < 0 ? 1 : 0;
        part += part.empty() ? "" : "*";
        part += symbol;
        const std::int64_t amount = power < 0 ? -power : power;
        part += amount == 1 ? "" : fmt::format("^{}", amount);
    }
    above = above.empty() ? "1" : above;
    if (below.empty()) {
        return above;
    }
    return belowCount == 1 ? fmt::format("{}/{}", above, below)
                           : fmt::format("{}/({})", above, below);
}

Conversion conversionBetween(const Meaning& from, const Meaning& to) {
    return {from.factor / to.factor, (from.offset - to.offset) / to.factor};
}

std::string conversionText(const Conversion& conversion) {
    std::string text = conversion.factor == 1
                           ? "x"
                           : fmt::format("{} * x", exact::fractionText(conversion.factor));
    if (conversion.offset != 0) {
        text += fmt::format(" {} {}", conversion.offset < 0 ? "-" : "+",
                            exact::fractionText(abs(conversion.offset)));
    }
    return text;
}

} // namespace tvtool::units
