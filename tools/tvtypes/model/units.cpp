#include "model/units.h"

#include "model/library_errors.h"
#include "model/unit_checks.h"
#include "text/quote.h"
#include "text/safe_text.h"
#include "units/reading.h"

#include <algorithm>
#include <optional>

namespace tvtool::model {

Units::Units(const fmi::Description& description, fmi::Remarks& remarks) {
    all_.resize(description.units.size());
    if (description.units.empty()) {
        return;
    }
    try {
        table_ = std::make_unique<TVTypeSys::UnitTable>();
    } catch (const fnd::except::IException& error) {
        remarks.note({"UnitDefinitions", 0}, "units are not looked at: {}",
                     text::inOneLine(problemText(error)));
        return;
    }
    std::ranges::transform(
        description.units, all_.begin(),
        [&](const fmi::UnitDefinition& definition) { return add(definition, remarks); });
}

Units::Unit Units::registerUnit(const std::string& expression, const char* source,
                                const fmi::Place& place, fmi::Remarks& remarks) {
    try {
        return {table_->registerUnit(expression.c_str(), true), expression, source};
    } catch (const fnd::except::IException& error) {
        remarks.problem(place, "{}", problemText(error));
        return {};
    }
}

Units::Unit Units::add(const fmi::UnitDefinition& definition, fmi::Remarks& remarks) {
    const NamedMeaning named = meaningOfName(definition.name);
    const bool agrees = checkUnit(definition, named, remarks);
    checkDisplayUnits(definition, named, remarks);
    if (agrees && !named.expression.empty()) {
        return registerUnit(named.expression, named.isAsWritten ? "name" : "reading",
                            definition.place, remarks);
    }
    Unit unit;
    if (definition.base && definition.base->factor == 1 && definition.base->offset == 0) {
        const std::string product = units::productText(powersOf(*definition.base));
        unit = registerUnit(product == "1" ? units::unitless : product, "base units",
                            definition.place, remarks);
    }
    if (agrees) {
        remarks.note(definition.place, "unit {} {} and {}", text::quoted(definition.name),
                     named.meaning ? "has a number in its name" : "is not known",
                     unit.id != inheritedUnit ? "is taken for its base units"
                                              : "has no place in the table");
    }
    return unit;
}

} // namespace tvtool::model
