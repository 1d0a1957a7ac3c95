#include "units/reading.h"

#include "text/utf16.h"
#include "units/resolution.h"
#include "units/spelling.h"

#include <tvtypes/units/expression.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <vector>

namespace tvtool::units {

namespace {

/// A product of names, each once, in the order in which they came first.
class Product {
  public:
    /// False if a power is too great.
    bool multiply(const KnownName& name, std::int64_t power) {
        constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
        const auto [entry, isNew] = indices_.try_emplace(name.name, names_.size());
        if (isNew) {
            names_.push_back({name.name, 0});
        }
        std::int64_t& sum = names_[entry->second].power;
        // Both are of 32 bits.
        const std::int64_t more = name.power * power;
        sum += more;
        return more <= greatest && more >= -greatest && sum <= greatest && sum >= -greatest;
    }

    std::string expression() const {
        std::string text;
        for (const KnownName& name : names_) {
            if (name.power > 0) {
                append(text, text.empty() ? "" : "*", name.name, name.power);
            }
        }
        for (const KnownName& name : names_) {
            if (name.power < 0) {
                append(text, text.empty() ? "1/" : "/", name.name, -name.power);
            }
        }
        return text.empty() ? unitless : text;
    }

  private:
    static void append(std::string& text, const char* sign, const std::string& name,
                       std::int64_t power) {
        text += sign;
        text += name;
        if (power != 1) {
            fmt::format_to(std::back_inserter(text), "^{}", power);
        }
    }

    std::vector<KnownName> names_;
    std::unordered_map<std::string, std::size_t> indices_;
};

/// The library passes over numbers ahead of a /, but those that are names or begin one are units.
bool hasNumberAsName(std::string_view text) {
    Monomial terms;
    return parseUnitExpr(text::toUtf16(text), terms) &&
           std::ranges::any_of(terms.names, [](const std::u16string& name) {
               return name.front() >= u'0' && name.front() <= u'9';
           });
}

std::variant<Reading, Misreading> readSpelling(const Spelling& spelling) {
    Product product;
    // A long text has few names, but each of them many times.
    std::unordered_map<std::string_view, std::vector<KnownName>> known;
    for (const SpeltName& spelt : spelling.names) {
        const auto [entry, isNew] = known.try_emplace(spelt.name);
        if (isNew) {
            entry->second = resolveName(spelt.name);
        }
        if (entry->second.empty()) {
            return Misreading{spelt.position, "the unit is not known", std::string(spelt.name)};
        }
        for (const KnownName& name : entry->second) {
            const std::int64_t outer = spelt.outer;
            const bool isLast = &name == &entry->second.back();
            if (!product.multiply(name, isLast ? spelt.power * outer : outer)) {
                return Misreading{spelt.position, "the power is above 2147483647", {}};
            }
        }
    }
    return Reading{product.expression(), false, spelling.factor};
}

} // namespace

std::variant<Reading, Misreading> readUnit(std::string_view text) {
    Spelling spelling;
    const std::optional<Fault> fault = parseSpelling(text, spelling);
    if (text == unitless || isExpression(text)) {
        return Reading{std::string(text), true,
                       fault || hasNumberAsName(text) ? exact::Number(1) : spelling.factor};
    }
    if (std::string name = nameOfUnit(text); !name.empty()) {
        return Reading{std::move(name), false, 1};
    }
    if (fault) {
        return Misreading{fault->position, fmt::format("expected {}", fault->expected), {}};
    }
    return readSpelling(spelling);
}

} // namespace tvtool::units
