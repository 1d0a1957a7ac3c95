#include "unit/search.h"

#include "unit/found.h"
#include "unit/text16.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <set>

namespace tvtool::unit {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

std::vector<report::UnitLine> linesOf(const std::function<bool(const UnitBase&)>& isWanted) {
    std::vector<report::UnitLine> lines;
    for (const auto& reference : UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const UnitBase& unit = reference.get();
        if (isWanted(unit)) {
            lines.push_back({toUtf8(unit.name), toUtf8(unit.symbol), quantityOf(unit),
                             definitionOf(unit), systemsOf(unit)});
        }
    }
    return lines;
}

/// Refuses what no unit of the database has.
void expectOneOf(const char* kind, const std::string& word, const std::set<std::string>& all) {
    if (!word.empty() && !all.contains(word)) {
        throw UnitError(
            fmt::format("no unit has this {}{}", kind, askFor(word, {all.begin(), all.end()})),
            word, 0);
    }
}

} // namespace

std::vector<report::UnitWord> completions(const std::string& prefix) {
    struct Kind {
        UnitDatabase::SearchBy by;
        const char* name;
    };
    constexpr std::array<Kind, 3> kinds{{{UnitDatabase::SearchByName, "name"},
                                         {UnitDatabase::SearchBySymbol, "symbol"},
                                         {UnitDatabase::SearchByAlias, "alias"}}};
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    std::vector<report::UnitWord> words;
    for (const Kind& kind : kinds) {
        std::vector<std::u16string> found;
        database.getAutoCompleteUnitSuggestions(kind.by, toUtf16(prefix), found);
        for (const std::u16string& word : found) {
            const UnitBase::ReferenceSet units = database.getUnit(word);
            words.push_back(
                {toUtf8(word), kind.name, units.empty() ? "" : toUtf8(units.begin()->get().name)});
        }
    }
    std::ranges::stable_sort(words, {}, &report::UnitWord::word);
    return words;
}

std::vector<report::UnitLine> unitsWith(const std::string& word) {
    const std::string wanted = foldCase(word);
    const auto has = [&wanted](const std::string& text) {
        return foldCase(text).find(wanted) != std::string::npos;
    };
    return linesOf([&](const UnitBase& unit) {
        return has(toUtf8(unit.name)) || has(toUtf8(unit.symbol)) || has(unit.display) ||
               has(quantityOf(unit)) ||
               std::ranges::any_of(unit.aliases,
                                   [&](const std::u16string& alias) { return has(toUtf8(alias)); });
    });
}

std::vector<report::UnitLine> unitsOf(const std::string& system, const std::string& quantity) {
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

} // namespace tvtool::unit
