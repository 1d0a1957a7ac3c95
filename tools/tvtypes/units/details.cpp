#include "units/details.h"

#include "text/utf16.h"
#include "units/found.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

constexpr std::size_t mostConvertible = 12;

/// Adds the units that the library converts to, in the order of their difference in size.
void addConvertible(const FoundUnit& found, UnitDetails& details) {
    std::vector<std::pair<double, std::string>> names;
    for (const auto& reference : TVTypeSys::UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const UnitBase& other = reference.get();
        if (found.unit->compare(other) != 0 && found.unit->compatibleWithUnit(other) &&
            found.unit->dimensionallyEquivalentWithUnit(other)) {
            const double factor = found.unit->getScalingFactorToConvertTo(other);
            names.emplace_back(std::abs(std::log(factor)), text::toUtf8(other.name));
        }
    }
    std::ranges::sort(names);
    details.convertibleCount = names.size();
    names.resize(std::min(names.size(), mostConvertible));
    std::ranges::transform(names, std::back_inserter(details.convertible),
                           &std::pair<double, std::string>::second);
}

void addExpansion(const Expansion& expansion, UnitDetails& details) {
    details.base = productText(expansion.powers);
    details.factor = exact::fractionText(expansion.factor);
    details.factorDecimal = static_cast<double>(expansion.factor);
    if (expansion.offset != 0) {
        details.conversion = Conversion{expansion.factor, expansion.offset}.text();
    }
    if (expansion.offsetInProduct != nullptr) {
        details.notes.push_back(
            fmt::format("{} has an offset, which counts for nothing in a product",
                        text::toUtf8(expansion.offsetInProduct->name)));
    }
}

/// Relative error that the library's computation in double may have.
constexpr double rounding = 1e-14;

std::string dimensionText(const FoundUnit& found) {
    const std::string form = canonicalForm(*found.unit);
    return form.empty() ? "no dimension" : "the canonical form " + form;
}

/// Returns the conversion by fundamental units; empty if they differ.
std::optional<Conversion> exactConversion(const FoundUnit& from, const FoundUnit& to) {
    const bool areEqual =
        from.expansion && to.expansion && from.expansion->powers == to.expansion->powers;
    return areEqual ? std::optional(conversionBetween(*from.expansion, *to.expansion))
                    : std::nullopt;
}

/// Explains why the canonical forms differ although the fundamental units are the same.
std::string formsExplanation(const FoundUnit& from, const FoundUnit& to) {
    const std::optional<Conversion> conversion = exactConversion(from, to);
    if (!conversion) {
        return {};
    }
    for (const FoundUnit* const found : {&from, &to}) {
        if (found->expansion->offsetInProduct != nullptr) {
            return fmt::format("; {} has an offset and is not taken apart",
                               text::toUtf8(found->expansion->offsetInProduct->name));
        }
    }
    return fmt::format("; the library tells a power of 0 from none, or the factor would be {}",
                       exact::fractionText(conversion->factor));
}

/// Returns the reason why the library has no factor.
std::string missingFactorReason(const FoundUnit& from, const FoundUnit& to) {
    if (!from.unit->dimensionallyEquivalentWithUnit(*to.unit)) {
        return fmt::format("{} has {}, {} has {}{}", from.label(), dimensionText(from), to.label(),
                           dimensionText(to), formsExplanation(from, to));
    }
    return fmt::format("both have {}, but {} measures {} and {} measures {}", dimensionText(from),
                       from.label(), quantityName(*from.unit), to.label(), quantityName(*to.unit));
}

} // namespace

UnitDetails unitDetails(const std::string& text, TVTypeSys::UnitTable& table) {
    const FoundUnit found = findUnit(text, table);
    const UnitBase& unit = *found.unit;
    UnitDetails details;
    details.text = text;
    details.expression = found.reading.expression;
    details.name = text::toUtf8(unit.name);
    details.symbol = text::toUtf8(unit.symbol);
    details.display = unit.display;
    std::ranges::transform(unit.aliases, std::back_inserter(details.aliases), text::toUtf8);
    details.definition = found.isNamed ? definitionText(unit) : "";
    details.quantity = quantityName(unit);
    details.canonical = canonicalForm(unit);
    if (found.expansion) {
        addExpansion(*found.expansion, details);
    }
    details.systems = systemNames(unit);
    if (found.reading.factor == 1) {
        addConvertible(found, details);
    } else {
        details.notes.push_back(fmt::format(
            "an expression has no room for the number {}; the library leaves it out, the factor "
            "here has it",
            exact::fractionText(found.reading.factor)));
    }
    return details;
}

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
        result.reason = missingFactorReason(from, to);
        return result;
    }
    const std::optional<Conversion> conversion = exactConversion(from, to);
    if (conversion && conversion->offset != 0) {
        result.factor.reset();
        result.conversion = conversion->text();
        result.reason =
            fmt::format("a factor alone does not convert {} into {}; a value x becomes {}",
                        from.label(), to.label(), result.conversion);
    } else if (conversion) {
        result.exact = exact::fractionText(conversion->factor);
        result.exactDecimal = static_cast<double>(conversion->factor);
        result.differs =
            !std::isfinite(*result.factor) ||
            !exact::areClose(exact::Number(*result.factor), conversion->factor, rounding);
    }
    return result;
}

} // namespace tvtool::units
