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

/// Symbols that are often written side by side.
constexpr std::array<std::string_view, 15> joinable{"kg", "m", "s", "A",  "K", "mol", "cd", "N",
                                                    "J",  "W", "V", "Pa", "C", "rad", "h"};
/// Those that are a prefix when they stand first: ms is no metre second.
constexpr std::array<std::string_view, 2> prefixes{"m", "h"};
constexpr std::size_t longestProduct = 12;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the digits at an end of the text, none of which makes 1.
std::optional<std::int64_t> powerIn(std::string_view digits) {
    std::int32_t power = 1;
    if (digits.empty()) {
        return power;
    }
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, power);
    return error == std::errc() && stop == end ? std::optional<std::int64_t>(power) : std::nullopt;
}

/// The ways to take a text apart into common symbols. More than one is as good as none.
class Products {
  public:
    explicit Products(std::string_view text) : text_(text) { search(0); }
    std::vector<KnownName> only() const { return count_ == 1 ? found_ : std::vector<KnownName>(); }

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
            if (!isPrefix && text_.substr(from).starts_with(symbol)) {
                std::size_t end = from + symbol.size();
                const std::size_t digits = end;
                while (end < text_.size() && isDigit(text_[end])) {
                    ++end;
                }
                if (const auto power = powerIn(text_.substr(digits, end - digits))) {
                    parts_.push_back({std::string(symbol), *power});
                    search(end);
                    parts_.pop_back();
                }
            }
        }
    }

    std::string_view text_;
    std::vector<KnownName> parts_;
    std::vector<KnownName> found_;
    int count_ = 0;
};

} // namespace

bool isExpression(std::string_view text) { return UnitBase::isValidUnitExpr(text::toUtf16(text)); }

std::string nameOfUnit(std::string_view text) {
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

std::vector<KnownName> resolveName(std::string_view text) {
    if (std::string name = nameOfUnit(text); !name.empty()) {
        return {{std::move(name), 1}};
    }
    const std::size_t lastLetter = text.find_last_not_of("0123456789");
    if (lastLetter == std::string_view::npos) {
        return {};
    }
    const std::string_view digits = text.substr(lastLetter + 1);
    const std::optional<std::int64_t> power = powerIn(digits);
    if (!digits.empty() && power) {
        if (std::string name = nameOfUnit(text.substr(0, lastLetter + 1)); !name.empty()) {
            return {{std::move(name), *power}};
        }
    }
    return text.size() <= longestProduct ? Products(text).only() : std::vector<KnownName>();
}

} // namespace tvtool::units
