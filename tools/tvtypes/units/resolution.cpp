#include "units/resolution.h"

#include "text/utf16.h"

#include <tvtypes/units.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

/// Symbols that are often written without an operator between them.
constexpr std::array<std::string_view, 15> joinable{"kg", "m", "s", "A",  "K", "mol", "cd", "N",
                                                    "J",  "W", "V", "Pa", "C", "rad", "h"};
/// Symbols that are prefixes at the beginning: ms is not metre second.
constexpr std::array<std::string_view, 2> prefixes{"m", "h"};
constexpr std::size_t longestProduct = 12;

constexpr std::string_view decimalDigits = "0123456789";

/// Returns the value of digits, 1 for none; empty if it is out of range.
std::optional<std::int64_t> parsePower(std::string_view digits) {
    std::int32_t power = 1;
    if (digits.empty()) {
        return power;
    }
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, power);
    return error == std::errc() && stop == end ? std::optional<std::int64_t>(power) : std::nullopt;
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

} // namespace

bool isExpression(std::string_view text) { return UnitBase::isValidUnitExpr(text::toUtf16(text)); }

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

std::vector<UnitPower> resolveName(std::string_view text) {
    if (std::string name = findUnitName(text); !name.empty()) {
        return {{std::move(name), 1}};
    }
    const std::size_t lastLetter = text.find_last_not_of(decimalDigits);
    if (lastLetter == std::string_view::npos) {
        return {};
    }
    const std::string_view digits = text.substr(lastLetter + 1);
    const std::optional<std::int64_t> power = parsePower(digits);
    if (!digits.empty() && power) {
        if (std::string name = findUnitName(text.substr(0, lastLetter + 1)); !name.empty()) {
            return {{std::move(name), *power}};
        }
    }
    return text.size() <= longestProduct ? JoinedSymbols(text).unique() : std::vector<UnitPower>();
}

} // namespace tvtool::units
