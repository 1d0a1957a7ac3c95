#include "model/units.h"

#include "model/unit_checks.h"
#include "text/quote.h"
#include "text/safe_text.h"
#include "units/reading.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tvtool::model {

namespace {

using fmi::noIndex;
using text::quoted;

/// The product of base units, if there is nothing else to it.
std::optional<std::string> expressionOf(const std::optional<fmi::BaseUnit>& base) {
    if (!base || base->factor != 1 || base->offset != 0) {
        return std::nullopt;
    }
    const std::string product = units::productText(powersOf(*base));
    return product == "1" ? units::unitless : product;
}

} // namespace

Units::Units(const fmi::Description& description, fmi::Remarks& remarks) {
    all_.resize(description.units.size());
    variableIds_.assign(description.variables.size(), inheritedUnit);
    if (description.units.empty()) {
        return;
    }
    try {
        table_ = std::make_unique<TVTypeSys::UnitTable>();
    } catch (const fnd::except::IException& refusal) {
        remarks.note({"UnitDefinitions", 0},
                     fmt::format("units are not looked at: {}", text::inOneLine(refusal.what())));
        return;
    }
    std::ranges::transform(
        description.units, all_.begin(),
        [&](const fmi::UnitDefinition& definition) { return enter(definition, remarks); });
    std::ranges::transform(
        description.variables, variableIds_.begin(), [this](const fmi::Variable& variable) {
            return variable.unit == noIndex ? inheritedUnit : all_[variable.unit].id;
        });
}

Units::Unit Units::registered(UnitBasis basis, const std::string& expression,
                              const fmi::Place& place, fmi::Remarks& remarks) {
    try {
        return {basis, table_->registerUnit(expression.c_str(), true), expression};
    } catch (const fnd::except::IException& refusal) {
        remarks.problem(place, refusal.what());
        return {};
    }
}

Units::Unit Units::enter(const fmi::UnitDefinition& definition, fmi::Remarks& remarks) {
    const NamedMeaning named = meaningOfName(definition.name);
    const bool agrees = checkUnit(definition, named, remarks);
    checkDisplayUnits(definition, named, remarks);
    if (agrees && !named.expression.empty()) {
        return registered(named.isAsWritten ? UnitBasis::Name : UnitBasis::Reading,
                          named.expression, definition.place, remarks);
    }
    const std::optional<std::string> product = expressionOf(definition.base);
    Unit unit =
        product ? registered(UnitBasis::BaseUnits, *product, definition.place, remarks) : Unit();
    if (agrees) {
        const char* const reason = named.meaning ? "has a number in its name" : "is not known";
        const char* const outcome = unit.basis == UnitBasis::BaseUnits
                                        ? "is taken for its base units"
                                        : "has no place in the table";
        remarks.note(definition.place, fmt::format("unit {} {} and {}",
                                                   text::quoted(definition.name), reason, outcome));
    }
    return unit;
}

} // namespace tvtool::model
