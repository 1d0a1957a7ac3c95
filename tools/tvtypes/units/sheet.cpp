#include "units/sheet.h"

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
void listConvertible(const FoundUnit& found, units::UnitSheet& sheet) {
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
    sheet.convertibleCount = names.size();
    for (const auto& [distance, name] : names) {
        if (sheet.convertible.size() < mostConvertible) {
            sheet.convertible.push_back(name);
        }
    }
}

void addMeaning(const Meaning& meaning, units::UnitSheet& sheet) {
    sheet.base = productText(meaning.powers);
    sheet.factor = exact::fractionText(meaning.factor);
    sheet.factorDecimal = static_cast<double>(meaning.factor);
    if (meaning.offset != 0) {
        sheet.conversion = conversionText({meaning.factor, meaning.offset});
    }
    if (meaning.offsetInProduct != nullptr) {
        sheet.notes.push_back(fmt::format("{} has an offset, which counts for nothing in a product",
                                          text::toUtf8(meaning.offsetInProduct->name)));
    }
}

} // namespace

units::UnitSheet sheetOf(const std::string& text, TVTypeSys::UnitTable& table) {
    const FoundUnit found = findUnit(text, table);
    const UnitBase& unit = *found.unit;
    units::UnitSheet sheet;
    sheet.text = text;
    sheet.expression = found.reading.expression;
    sheet.name = text::toUtf8(unit.name);
    sheet.symbol = text::toUtf8(unit.symbol);
    sheet.display = unit.display;
    std::ranges::transform(unit.aliases, std::back_inserter(sheet.aliases), text::toUtf8);
    sheet.definition = found.isNamed ? definitionOf(unit) : "";
    sheet.quantity = quantityOf(unit);
    std::ostringstream canonical;
    unit.displayCanonicalForm(canonical);
    sheet.canonical = canonical.str();
    if (found.meaning) {
        addMeaning(*found.meaning, sheet);
    }
    sheet.systems = systemsOf(unit);
    if (found.reading.factor == 1) {
        listConvertible(found, sheet);
    } else {
        sheet.notes.push_back(fmt::format(
            "an expression has no room for the number {}; the library leaves it out, the factor "
            "here has it",
            exact::fractionText(found.reading.factor)));
    }
    return sheet;
}

} // namespace tvtool::units
