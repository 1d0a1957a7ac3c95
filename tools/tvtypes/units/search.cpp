#include "units/search.h"

#include "text/parse_error.h"
#include "text/utf16.h"
#include "units/found.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

std::vector<UnitLine> unitLines(const std::function<bool(const UnitBase&)>& matches) {
    std::vector<UnitLine> lines;
    for (const auto& reference : UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const UnitBase& unit = reference.get();
        if (matches(unit)) {
            lines.push_back({text::toUtf8(unit.name), text::toUtf8(unit.symbol), quantityName(unit),
                             definitionText(unit), systemNames(unit)});
        }
    }
    return lines;
}

/// Throws a text::ParseError with suggestions if a non-empty word is not one of the known ones.
void checkKnown(const char* kind, const std::string& word, const std::set<std::string>& known) {
    if (!word.empty() && !known.contains(word)) {
        throw text::ParseError(fmt::format("no unit has this {}", kind), word, 0,
                               text::suggestionsFor(word, known));
    }
}

} // namespace

std::vector<UnitWord> completions(const std::string& prefix) {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    std::vector<UnitWord> words;
    for (const auto& [by, kind] : {std::pair(UnitDatabase::SearchByName, "name"),
                                   {UnitDatabase::SearchBySymbol, "symbol"},
                                   {UnitDatabase::SearchByAlias, "alias"}}) {
        std::vector<std::u16string> found;
        database.getAutoCompleteUnitSuggestions(by, text::toUtf16(prefix), found);
        for (const std::u16string& word : found) {
            const UnitBase::ReferenceSet units = database.getUnit(word);
            words.push_back({text::toUtf8(word), kind, "", ""});
            if (!units.empty()) {
                words.back().unit = text::toUtf8(units.begin()->get().name);
                words.back().quantity = quantityName(units.begin()->get());
            }
        }
    }
    std::ranges::stable_sort(words, {}, &UnitWord::word);
    return words;
}

std::vector<UnitLine> unitsWith(const std::string& word) {
    const std::string wanted = text::foldCase(word);
    const auto contains = [&wanted](const std::string& text) {
        return text::foldCase(text).find(wanted) != std::string::npos;
    };
    return unitLines([&](const UnitBase& unit) {
        return contains(text::toUtf8(unit.name)) || contains(text::toUtf8(unit.symbol)) ||
               contains(unit.display) || contains(quantityName(unit)) ||
               std::ranges::any_of(unit.aliases, [&](const std::u16string& alias) {
                   return contains(text::toUtf8(alias));
               });
    });
}

std::vector<UnitLine> unitsOf(const std::string& system, const std::string& quantity) {
    std::set<std::string> systems;
    std::set<std::string> quantities;
    for (const auto& reference : UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const std::vector<std::string> own = systemNames(reference.get());
        systems.insert(own.begin(), own.end());
        quantities.insert(quantityName(reference.get()));
    }
    checkKnown("system", system, systems);
    checkKnown("quantity", quantity, quantities);
    return unitLines([&](const UnitBase& unit) {
        const std::vector<std::string> own = systemNames(unit);
        return (system.empty() || std::ranges::find(own, system) != own.end()) &&
               (quantity.empty() || quantityName(unit) == quantity);
    });
}

} // namespace tvtool::units
