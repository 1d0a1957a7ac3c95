#include "units/shown_number.h"

#include "exact/pi.h"

#include <fmt/format.h>

#include <utility>

namespace tvtool::units {

namespace {

/// The longest exact text, in bytes, that is easier to read than the decimal alone.
constexpr std::size_t longestExact = 40;
/// A smaller uncertainty is that of the digits that the database has of an irrational number.
constexpr double leastUncertainty = 1e-17;

} // namespace

std::string ShownNumber::decimalText() const { return (isRounded ? "about " : "") + digits; }

std::string ShownNumber::uncertaintyText() const {
    return uncertainty ? fmt::format(" (measured, relative uncertainty {:.2g})", *uncertainty) : "";
}

std::string ShownNumber::text() const {
    if (isRounded && !exact.empty() && exact.size() <= longestExact) {
        return fmt::format("{} ({})", exact, decimalText());
    }
    return decimalText() + uncertaintyText();
}

ShownNumber shownNumber(const exact::Number& number, std::int64_t piPower, double uncertainty) {
    exact::Decimal decimal = exact::shortestDecimal(number);
    ShownNumber shown;
    shown.digits = std::move(decimal.text);
    shown.decimal = exact::toDouble(number);
    const bool isInexact = uncertainty > 0 && number != 0;
    const bool isMeasured = isInexact && uncertainty >= leastUncertainty;
    const bool isIrrational = (piPower != 0 && number != 0) || (isInexact && !isMeasured);
    shown.isRounded = isIrrational || !decimal.isExact;
    if (isMeasured) {
        shown.uncertainty = uncertainty;
    } else if (!isInexact) {
        shown.exact = exact::multipleOfPiText(number, piPower);
    }
    return shown;
}

} // namespace tvtool::units
