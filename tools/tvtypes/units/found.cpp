#include "units/found.h"

#include "text/utf16.h"
#include "units/resolution.h"
#include "units/words.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <variant>

namespace tvtool::units {

using TVTypeSys::UnitBase;

std::string FoundUnit::label() const {
    return isNamed ? text::toUtf8(unit->name) : reading.expression;
}

FoundUnit findUnit(const std::string& text, TVTypeSys::UnitTable& table) {
    auto read = readUnit(text);
    if (const auto* const misreading = std::get_if<Misreading>(&read)) {
        std::string sentence = misreading->sentence;
        if (!misreading->unknownName.empty()) {
            sentence += askFor(misreading->unknownName, unitWords());
        }
        throw text::ParseError(sentence, text, misreading->position);
    }
    FoundUnit found{text, std::move(std::get<Reading>(read)), nullptr, false, std::nullopt};
    try {
        found.unit = table.getUnit(table.registerUnit(found.reading.expression.c_str(), true));
    } catch (const boost::bad_rational&) {
        throw text::ParseError("its factor is beyond the rational numbers of the library", text, 0);
    }
    found.isNamed = !nameOfUnit(found.reading.expression).empty();
    found.meaning = meaningOf(*found.unit);
    if (found.meaning) {
        found.meaning->factor *= found.reading.factor;
    }
    return found;
}

std::string quantityOf(const UnitBase& unit) {
    const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit);
    return concrete == nullptr ? "" : text::toUtf8(concrete->abstractUnit.get().name);
}

std::string definitionOf(const UnitBase& unit) {
    std::string text = text::toUtf8(unit.expression);
    if (const exact::Number scaling = exactOf(unit.scaling); scaling != 1) {
        text = fmt::format("{} * {}", exact::fractionText(scaling), text);
    }
    if (const exact::Number offset = exactOf(unit.offset); offset != 0) {
        text += fmt::format(" {} {}", offset < 0 ? '-' : '+', exact::fractionText(abs(offset)));
    }
    return text;
}

std::vector<std::string> systemsOf(const UnitBase& unit) {
    std::vector<std::string> names;
    if (const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit)) {
        for (const TVTypeSys::UnitSystem* const system : concrete->ownerUnitSystems) {
            names.push_back(text::toUtf8(system->getName()));
        }
    }
    return names;
}

std::string askFor(const std::string& word, const std::vector<std::string>& words) {
    const std::vector<std::string> suggestions = suggestionsFor(word, words);
    return suggestions.empty() ? ""
                               : fmt::format("; did you mean {}?", fmt::join(suggestions, ", "));
}

} // namespace tvtool::units
