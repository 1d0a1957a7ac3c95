#include "units/joined.h"

#include "text/number.h"
#include "units/unit_names.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tvtool::units {

namespace {

struct Joinable {
    std::string_view symbol;
    bool takesPrefix = true;
};

/// Symbols that are often written without a sign between them. A symbol precedes those that it
/// begins with.
constexpr std::array<Joinable, 21> joinable{
    {{"kg", false}, {"mol"}, {"min", false}, {"m"},   {"sr", false}, {"s"},      {"A"},
     {"K"},         {"cd"},  {"N"},          {"J"},   {"W"},         {"V"},      {"Pa"},
     {"C"},         {"rad"}, {"ohm"},        {"Ohm"}, {"\u03A9"},    {"\u2126"}, {"h", false}}};
constexpr std::array<std::string_view, 11> prefixes{"k",      "M", "G", "m", "u", "\u00B5",
                                                    "\u03BC", "n", "p", "c", "d"};
constexpr std::string_view hecto = "h"; // a prefix of the pascal alone, else the hour

constexpr std::size_t longestProduct = 20;
constexpr std::string_view decimalDigits = "0123456789";

/// Splits by backtracking. The first result is the one with the preferred symbols.
class Splitter {
  public:
    explicit Splitter(std::string_view text) : text_(text) {}

    std::vector<UnitPower> split() {
        return text_.size() <= longestProduct && splitFrom(0) ? parts_ : std::vector<UnitPower>();
    }

  private:
    bool splitFrom(std::size_t from) {
        if (from == text_.size()) {
            return true;
        }
        for (const std::string_view prefix : prefixes) {
            if (text_.substr(from).starts_with(prefix) && takeSymbol(from, prefix.size())) {
                return true;
            }
        }
        return (text_.substr(from).starts_with("hPa") && takeSymbol(from, hecto.size())) ||
               takeSymbol(from, 0);
    }

    /// Takes a symbol after a prefix of some bytes, and what follows it.
    bool takeSymbol(std::size_t from, std::size_t prefix) {
        const std::string_view rest = text_.substr(from + prefix);
        return std::ranges::any_of(joinable, [&](const Joinable& row) {
            if (!rest.starts_with(row.symbol) || (prefix > 0 && !row.takesPrefix)) {
                return false;
            }
            const std::size_t digits = from + prefix + row.symbol.size();
            const std::size_t end =
                std::min(text_.find_first_not_of(decimalDigits, digits), text_.size());
            const std::int64_t power = powerOfDigits(text_.substr(digits, end - digits));
            std::string name = findUnitName(text_.substr(from, digits - from));
            if (power == 0 || name.empty()) {
                return false;
            }
            parts_.push_back({std::move(name), power});
            if (splitFrom(end)) {
                return true;
            }
            parts_.pop_back();
            return false;
        });
    }

    std::string_view text_;
    std::vector<UnitPower> parts_;
};

} // namespace

std::int64_t powerOfDigits(std::string_view digits) {
    return digits.empty() ? 1 : text::parseNumber<std::int32_t>(digits).value_or(0);
}

std::vector<UnitPower> splitJoined(std::string_view text) { return Splitter(text).split(); }

} // namespace tvtool::units
