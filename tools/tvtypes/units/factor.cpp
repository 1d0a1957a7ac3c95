#include "units/factor.h"

#include "text/utf16.h"
#include "units/found.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <cmath>
#include <sstream>

namespace tvtool::units {

namespace {

/// A factor computed in double is rounded in some steps.
constexpr double rounding = 1e-14;

std::string canonicalFormOf(const FoundUnit& found) {
    std::ostringstream form;
    found.unit->displayCanonicalForm(form);
    return form.str().empty() ? "no dimension" : "the canonical form " + form.str();
}

/// What makes forms differ that say the same.
std::string explanationOf(const FoundUnit& from, const FoundUnit& to) {
    if (!from.meaning || !to.meaning || from.meaning->powers != to.meaning->powers) {
        return {};
    }
    for (const FoundUnit* const found : {&from, &to}) {
        if (found->meaning->offsetInProduct != nullptr) {
            return fmt::format("; {} has an offset and is not taken apart",
                               text::toUtf8(found->meaning->offsetInProduct->name));
        }
    }
    return fmt::format("; the library tells a power of 0 from none, or the factor would be {}",
                       exact::fractionText(conversionBetween(*from.meaning, *to.meaning).factor));
}

/// Why the library has no factor.
std::string reasonOf(const FoundUnit& from, const FoundUnit& to) {
    if (!from.unit->dimensionallyEquivalentWithUnit(*to.unit)) {
        return fmt::format("{} has {}, {} has {}{}", from.label(), canonicalFormOf(from),
                           to.label(), canonicalFormOf(to), explanationOf(from, to));
    }
    return fmt::format("both have {}, but {} measures {} and {} measures {}", canonicalFormOf(from),
                       from.label(), quantityOf(*from.unit), to.label(), quantityOf(*to.unit));
}

/// Whether values convert by a factor and an offset.
bool needsOffset(const FoundUnit& from, const FoundUnit& to) {
    return from.meaning && to.meaning && from.meaning->powers == to.meaning->powers &&
           conversionBetween(*from.meaning, *to.meaning).offset != 0;
}

} // namespace

UnitFactor factorBetween(const std::string& fromText, const std::string& toText,
                         TVTypeSys::UnitTable& table) {
    const FoundUnit from = findUnit(fromText, table);
    const FoundUnit to = findUnit(toText, table);
    UnitFactor result;
    result.from = from.reading.expression;
    result.to = to.reading.expression;
    try {
        const exact::Number numbers = from.reading.factor / to.reading.factor;
        result.factor =
            from.unit->getScalingFactorToConvertTo(*to.unit) * static_cast<double>(numbers);
    } catch (const fnd::except::IException&) {
        result.reason = reasonOf(from, to);
        return result;
    }
    if (needsOffset(from, to)) {
        result.factor.reset();
        result.conversion = conversionText(conversionBetween(*from.meaning, *to.meaning));
        result.reason =
            fmt::format("a factor alone does not convert {} into {}; a value x becomes {}",
                        from.label(), to.label(), result.conversion);
        return result;
    }
    if (from.meaning && to.meaning) {
        const exact::Number exact = conversionBetween(*from.meaning, *to.meaning).factor;
        result.exact = exact::fractionText(exact);
        result.exactDecimal = static_cast<double>(exact);
        result.differs = !std::isfinite(*result.factor) ||
                         !exact::areClose(exact::Number(*result.factor), exact, rounding);
    }
    return result;
}

} // namespace tvtool::units
