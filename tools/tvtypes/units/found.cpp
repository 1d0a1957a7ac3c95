#include "units/found.h"

#include "text/utf16.h"
#include "units/definitions.h"
#include "units/shown_number.h"
#include "units/words.h"

#include <fmt/format.h>

#include <sstream>

namespace tvtool::units {

using TVTypeSys::UnitBase;

namespace {

Reading readWithSuggestions(const std::string& text) {
    try {
        return readUnit(text);
    } catch (const UnknownUnit& error) {
        throw text::ParseError(error.what(), text, error.position,
                               text::suggestionsFor(error.name, unitWords()));
    }
}

} // namespace

std::string FoundUnit::label() const {
    return isNamed ? text::toUtf8(unit->name) : reading.expression;
}

FoundUnit findUnit(const std::string& text, TVTypeSys::UnitTable& table) {
    FoundUnit found;
    found.reading = readWithSuggestions(text);
    try {
        found.unit = table.getUnit(table.registerUnit(found.reading.expression.c_str(), true));
    } catch (const boost::bad_rational&) {
        throw text::ParseError("its factor is beyond the rational numbers of the library", text, 0);
    }
    found.isNamed = !findUnitName(found.reading.expression).empty();
    found.expansion = expand(*found.unit);
    if (found.expansion) {
        found.expansion->factor *= found.reading.factor;
    }
    return found;
}

std::string quantityName(const UnitBase& unit) {
    const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit);
    return concrete == nullptr ? "" : text::toUtf8(concrete->abstractUnit.get().name);
}

std::string definitionText(const UnitBase& unit) {
    std::string text = text::toUtf8(unit.expression);
    if (const std::optional<Definition> definition = definitions().find(unit.name)) {
        const ShownNumber factor =
            shownNumber(definition->factor, definition->piPower, definition->uncertainty);
        const bool isFraction = factor.isRounded && !factor.exact.empty();
        text = fmt::format("{} * {}{}", isFraction ? factor.exact : factor.decimalText(), text,
                           factor.uncertaintyText());
    } else if (const exact::Number scaling = exactValue(unit.scaling); scaling != 1) {
        text = fmt::format("{} * {}", exact::fractionText(scaling), text);
    }
    if (const exact::Number offset = exactValue(unit.offset); offset != 0) {
        text += fmt::format(" {} {}", offset < 0 ? '-' : '+', exact::fractionText(abs(offset)));
    }
    return text;
}

std::vector<std::string> systemNames(const UnitBase& unit) {
    std::vector<std::string> names;
    if (const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit)) {
        for (const TVTypeSys::UnitSystem* const system : concrete->ownerUnitSystems) {
            names.push_back(text::toUtf8(system->getName()));
        }
    }
    return names;
}

std::string canonicalForm(const UnitBase& unit) {
    std::ostringstream form;
    unit.displayCanonicalForm(form);
    return form.str();
}

} // namespace tvtool::units
