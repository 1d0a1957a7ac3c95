#include "units/reading.h"

#include "text/number.h"
#include "text/utf16.h"
#include "units/spelling.h"

#include <tvtypes/units.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

struct UnitPower {
    std::string name; ///< valid in an expression
    std::int64_t power = 1;
};

/// Symbols that are often written without an operator between them.
constexpr std::array<std::string_view, 15> joinable{"kg", "m", "s", "A",  "K", "mol", "cd", "N",
                                                    "J",  "W", "V", "Pa", "C", "rad", "h"};
/// Symbols that are prefixes at the beginning: ms is not metre second.
constexpr std::array<std::string_view, 2> prefixes{"m", "h"};
constexpr std::size_t longestProduct = 12;

constexpr std::string_view decimalDigits = "0123456789";

/// Returns the value of digits, 1 for none; empty if it is out of range.
std::optional<std::int32_t> parsePower(std::string_view digits) {
    return digits.empty() ? std::optional(1) : text::parseNumber<std::int32_t>(digits);
}

/// Finds the products of common symbols that are joined to a text, by backtracking.
class JoinedSymbols {
  public:
    explicit JoinedSymbols(std::string_view text) : text_(text) { search(0); }

    /// Returns the product if there is exactly one.
    std::vector<UnitPower> unique() const {
        return count_ == 1 ? found_ : std::vector<UnitPower>();
    }

  private:
    void search(std::size_t from) {
        if (from == text_.size()) {
            ++count_;
            found_ = parts_;
            return;
        }
        for (const std::string_view symbol : joinable) {
            const bool isPrefix =
                from == 0 && std::ranges::find(prefixes, symbol) != prefixes.end();
            if (isPrefix || !text_.substr(from).starts_with(symbol)) {
                continue;
            }
            const std::size_t digits = from + symbol.size();
            const std::size_t end =
                std::min(text_.find_first_not_of(decimalDigits, digits), text_.size());
            if (const auto power = parsePower(text_.substr(digits, end - digits))) {
                parts_.push_back({std::string(symbol), *power});
                search(end);
                parts_.pop_back();
            }
        }
    }

    std::string_view text_;
    std::vector<UnitPower> parts_;
    std::vector<UnitPower> found_;
    int count_ = 0;
};

/// Returns whether the library accepts a text as an expression. It does not accept "unitless".
bool isExpression(std::string_view text) { return UnitBase::isValidUnitExpr(text::toUtf16(text)); }

/// Resolves a name without operators: a name in the database; one followed by a power, as m2; or a
/// product of common symbols, as Nm, if there is only one such product. A power at the end of a
/// product applies to its last part. Empty if the name is unknown.
std::vector<UnitPower> resolveName(std::string_view text) {
    if (std::string name = findUnitName(text); !name.empty()) {
        return {{std::move(name), 1}};
    }
    const std::size_t lastLetter = text.find_last_not_of(decimalDigits);
    if (lastLetter == std::string_view::npos) {
        return {};
    }
    const std::string_view digits = text.substr(lastLetter + 1);
    const std::optional<std::int32_t> power = parsePower(digits);
    if (!digits.empty() && power) {
        if (std::string name = findUnitName(text.substr(0, lastLetter + 1)); !name.empty()) {
            return {{std::move(name), *power}};
        }
    }
    return text.size() <= longestProduct ? JoinedSymbols(text).unique() : std::vector<UnitPower>();
}

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
    return {product.expression(), false, spelling.factor, {}};
}

} // namespace

std::string findUnitName(std::string_view text) {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    const UnitBase::ReferenceSet units = database.getUnit(text::toUtf16(text));
    if (units.empty()) {
        return {};
    }
    if (isExpression(text)) {
        return std::string(text);
    }
    const UnitBase& unit = units.begin()->get();
    for (const std::u16string* const name : {&unit.symbol, &unit.name}) {
        const UnitBase::ReferenceSet named = database.getUnit(*name);
        if (!named.empty() && &named.begin()->get() == &unit && UnitBase::isValidUnitExpr(*name)) {
            return text::toUtf8(*name);
        }
    }
    return {};
}

Reading readUnit(std::string_view text) {
    if (text == unitless || isExpression(text)) {
        return {std::string(text), true, expressionFactor(text), {}};
    }
    if (std::string name = findUnitName(text); !name.empty()) {
        return {std::move(name), false, 1, {}};
    }
    return readSpelling(text);
}

} // namespace tvtool::units
