#include "units/details.h"

#include "text/utf16.h"
#include "units/factor.h"
#include "units/found.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

constexpr std::size_t mostConvertible = 12;

void addExpansion(const Expansion& expansion, UnitDetails& details) {
    details.base = productText(expansion.powers);
    const Conversion conversion = conversionBetween(expansion, Expansion());
    details.factor = shownNumber(conversion.factor, conversion.piPower, conversion.uncertainty);
    if (conversion.offset != 0) {
        details.conversion = conversion.text();
    }
    if (std::string note = differenceNote(expansion); !note.empty()) {
        details.notes.push_back(std::move(note));
    }
}

/// Adds the library's factor to the fundamental units. It takes no unit with an offset apart.
void addLibraryFactor(const UnitBase& unit, const Expansion& expansion, UnitDetails& details) {
    if (expansion.offsetInProduct != nullptr) {
        return;
    }
    details.libraryFactor = unit.baseScalingFactor.toDouble();
    const LibraryFactor factor = compareFactor(*details.libraryFactor, expansion.factor);
    if (factor.differs()) {
        const bool isFlagged = factor.isWrong() && unit.baseScalingFactor.precision() != 0;
        details.libraryNote =
            factor.note() + (isFlagged ? ", which the library flags as imprecise" : "");
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
    details.systems = systemNames(unit);
    details.notes = found.reading.notes;
    if (found.expansion) {
        addExpansion(*found.expansion, details);
    }
    if (found.reading.factor != 1) {
        details.notes.push_back(
            fmt::format("expressions of the library have no numbers; the factor here includes {}",
                        exact::fractionText(found.reading.factor)));
    } else if (found.expansion) {
        addLibraryFactor(unit, *found.expansion, details);
        ConvertibleUnits convertible = convertibleUnits(found, mostConvertible);
        details.convertible = std::move(convertible.units);
        details.convertibleCount = convertible.count;
    }
    return details;
}

} // namespace tvtool::units
