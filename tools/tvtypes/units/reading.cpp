#include "units/reading.h"

#include "text/utf16.h"
#include "units/resolution.h"
#include "units/spelling.h"

#include <tvtypes/units/expression.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

namespace tvtool::units {

namespace {

/// A product of names, each once, in the order of their first occurrence.
class Product {
  public:
    /// Returns false if a power exceeds 32 bits.
    bool multiply(const UnitPower& name, std::int64_t power) {
        constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
        const auto [entry, isNew] = indices_.try_emplace(name.name, names_.size());
        if (isNew) {
            names_.push_back({name.name, 0});
        }
        std::int64_t& sum = names_[entry->second].power;
        // The factors have 32 bits each.
        const std::int64_t more = name.power * power;
        sum += more;
        return more <= greatest && more >= -greatest && sum <= greatest && sum >= -greatest;
    }

    std::string expression() const {
        std::string text;
        for (const UnitPower& name : names_) {
            if (name.power > 0) {
                text += text.empty() ? "" : "*";
                text += name.name + exponent(name.power);
            }
        }
        for (const UnitPower& name : names_) {
            if (name.power < 0) {
                text += text.empty() ? "1/" : "/";
                text += name.name + exponent(-name.power);
            }
        }
        return text.empty() ? unitless : text;
    }

  private:
    static std::string exponent(std::int64_t power) {
        return power == 1 ? "" : fmt::format("^{}", power);
    }

    std::vector<UnitPower> names_;
    std::unordered_map<std::string, std::size_t> indices_;
};

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

Reading readSpelling(std::string_view text) {
    const Spelling spelling = parseSpelling(text);
    Product product;
    // Memoised, because a long text repeats few names.
    std::unordered_map<std::string_view, std::vector<UnitPower>> resolved;
    for (const SpeltName& spelt : spelling.names) {
        const auto [entry, isNew] = resolved.try_emplace(spelt.name);
        if (isNew) {
            entry->second = resolveName(spelt.name);
        }
        if (entry->second.empty()) {
            throw UnknownUnit(text, spelt.position, spelt.name);
        }
        for (const UnitPower& name : entry->second) {
            const std::int64_t outer = spelt.outer;
            const bool isLast = &name == &entry->second.back();
            if (!product.multiply(name, isLast ? spelt.power * outer : outer)) {
                throw text::ParseError("the power is above 2147483647", std::string(text),
                                       spelt.position);
            }
        }
    }
    return {product.expression(), false, spelling.factor};
}

} // namespace

Reading readUnit(std::string_view text) {
    if (text == unitless || isExpression(text)) {
        return {std::string(text), true, expressionFactor(text)};
    }
    if (std::string name = findUnitName(text); !name.empty()) {
        return {std::move(name), false, 1};
    }
    return readSpelling(text);
}

} // namespace tvtool::units
