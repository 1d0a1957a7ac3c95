#include "units/details.h"

#include "text/utf16.h"
#include "units/found.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

constexpr std::size_t mostConvertible = 12;

/// The units that the library converts to, the nearest in size first.
void listConvertible(const FoundUnit& found, UnitDetails& details) {
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
    for (const auto& [distance, name] : names) {
        if (details.convertible.size() < mostConvertible) {
            details.convertible.push_back(name);
        }
    }
}

void addMeaning(const Meaning& meaning, UnitDetails& details) {
    details.base = productText(meaning.powers);
    details.factor = exact::fractionText(meaning.factor);
    details.factorDecimal = static_cast<double>(meaning.factor);
    if (meaning.offset != 0) {
        details.conversion = conversionText({meaning.factor, meaning.offset});
    }
    if (meaning.offsetInProduct != nullptr) {
        details.notes.push_back(
            fmt::format("{} has an offset, which counts for nothing in a product",
                        text::toUtf8(meaning.offsetInProduct->name)));
    }
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
    details.definition = found.isNamed ? definitionOf(unit) : "";
    details.quantity = quantityOf(unit);
    std::ostringstream canonical;
    unit.displayCanonicalForm(canonical);
    details.canonical = canonical.str();
    if (found.meaning) {
        addMeaning(*found.meaning, details);
    }
    details.systems = systemsOf(unit);
    if (found.reading.factor == 1) {
        listConvertible(found, details);
    } else {
        details.notes.push_back(fmt::format(
            "an expression has no room for the number {}; the library leaves it out, the factor "
            "here has it",
            exact::fractionText(found.reading.factor)));
    }
    return details;
}

} // namespace tvtool::units
