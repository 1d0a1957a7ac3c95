#include "units/search.h"

#include "text/utf16.h"
#include "units/found.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <set>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

std::vector<UnitLine> linesOf(const std::function<bool(const UnitBase&)>& isWanted) {
    std::vector<UnitLine> lines;
    for (const auto& reference : UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const UnitBase& unit = reference.get();
        if (isWanted(unit)) {
            lines.push_back({text::toUtf8(unit.name), text::toUtf8(unit.symbol), quantityOf(unit),
                             definitionOf(unit), systemsOf(unit)});
        }
    }
    return lines;
}

/// Refuses what no unit of the database has.
void expectOneOf(const char* kind, const std::string& word, const std::set<std::string>& all) {
    if (!word.empty() && !all.contains(word)) {
        throw text::ParseError(
            fmt::format("no unit has this {}{}", kind, askFor(word, {all.begin(), all.end()})),
            word, 0);
    }
}

} // namespace

std::vector<UnitWord> completions(const std::string& prefix) {
    struct Kind {
        UnitDatabase::SearchBy by;
        const char* name;
    };
    constexpr std::array<Kind, 3> kinds{{{UnitDatabase::SearchByName, "name"},
                                         {UnitDatabase::SearchBySymbol, "symbol"},
                                         {UnitDatabase::SearchByAlias, "alias"}}};
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    std::vector<UnitWord> words;
    for (const Kind& kind : kinds) {
        std::vector<std::u16string> found;
        database.getAutoCompleteUnitSuggestions(kind.by, text::toUtf16(prefix), found);
        for (const std::u16string& word : found) {
            const UnitBase::ReferenceSet units = database.getUnit(word);
            words.push_back({text::toUtf8(word), kind.name,
                             units.empty() ? "" : text::toUtf8(units.begin()->get().name)});
        }
    }
    std::ranges::stable_sort(words, {}, &UnitWord::word);
    return words;
}

std::vector<UnitLine> unitsWith(const std::string& word) {
    const std::string wanted = text::foldCase(word);
    const auto has = [&wanted](const std::string& text) {
        return text::foldCase(text).find(wanted) != std::string::npos;
    };
    return linesOf([&](const UnitBase& unit) {
        return has(text::toUtf8(unit.name)) || has(text::toUtf8(unit.symbol)) ||
               has(unit.display) || has(quantityOf(unit)) ||
               std::ranges::any_of(unit.aliases, [&](const std::u16string& alias) {
                   return has(text::toUtf8(alias));
               });
    });
}

std::vector<UnitLine> unitsOf(const std::string& system, const std::string& quantity) {
    std::set<std::string> systems;
    std::set<std::string> quantities;
    for (const auto& reference : UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const std::vector<std::string> own = systemsOf(reference.get());
        systems.insert(own.begin(), own.end());
        quantities.insert(quantityOf(reference.get()));
    }
    expectOneOf("system", system, systems);
    expectOneOf("quantity", quantity, quantities);
    return linesOf([&](const UnitBase& unit) {
        const std::vector<std::string> own = systemsOf(unit);
        return (system.empty() || std::ranges::find(own, system) != own.end()) &&
               (quantity.empty() || quantityOf(unit) == quantity);
    });
}

} // namespace tvtool::units
