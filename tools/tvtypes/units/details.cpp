#include "units/details.h"

#include "text/utf16.h"
#include "units/found.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ranges>
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
    std::ranges::copy(names | std::views::values, std::back_inserter(details.convertible));
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

} // namespace tvtool::units
