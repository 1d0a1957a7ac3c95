#include "model/units.h"

#include "model/library_errors.h"
#include "model/unit_checks.h"
#include "text/quote.h"
#include "text/safe_text.h"
#include "units/reading.h"

#include <algorithm>
#include <optional>

namespace tvtool::model {

namespace {

using findings::Code;
using findings::Subject;

Subject subjectOf(const exchange::UnitDefinition& unit) {
    return {findings::SubjectKind::Unit, unit.name};
}

} // namespace

void Units::add(const std::vector<exchange::UnitDefinition>& definitions,
                findings::Findings& findings) {
    const std::size_t first = all_.size();
    all_.resize(first + definitions.size());
    if (definitions.empty()) {
        return;
    }
    try {
        if (!table_) {
            table_ = std::make_unique<TVTypeSys::UnitTable>();
        }
    } catch (const fnd::except::IException& error) {
        findings.add(Code::UnitTableMissing, {"UnitDefinitions"}, {}, "units are not looked at: {}",
                     text::inOneLine(problemText(error)));
        return;
    }
    std::ranges::transform(
        definitions, all_.begin() + static_cast<std::ptrdiff_t>(first),
        [&](const exchange::UnitDefinition& definition) { return add(definition, findings); });
}

Units::Unit Units::registerUnit(const std::string& expression, const char* source,
                                const exchange::UnitDefinition& definition,
                                findings::Findings& findings) {
    try {
        return {table_->registerUnit(expression.c_str(), true), expression, source};
    } catch (const fnd::except::IException& error) {
        findings.add(Code::UnitOutside, definition.place, subjectOf(definition), "{}",
                     problemText(error));
        return {};
    }
}

void Units::checkFactor(const Unit& unit, const units::Expansion& meaning,
                        const exchange::UnitDefinition& definition,
                        findings::Findings& findings) const {
    constexpr double tolerance = 1e-9;
    const TVTypeSys::UnitBase* const registered = table_->getUnit(unit.id);
    // The library does not expand a unit with an offset in a product.
    if (unit.id == inheritedUnit || registered == nullptr || meaning.offsetInProduct != nullptr) {
        return;
    }
    const exact::Number factor = units::exactValue(registered->baseScalingFactor);
    if (!exact::areClose(factor, meaning.factor, tolerance)) {
        findings.add(Code::UnitFactorInexact, definition.place, subjectOf(definition),
                     "unit {} has the factor {:.10g} in the library; exactly it is {:.10g}",
                     text::quoted(definition.name), static_cast<double>(factor),
                     static_cast<double>(meaning.factor));
    }
}

Units::Unit Units::add(const exchange::UnitDefinition& definition, findings::Findings& findings) {
    NamedMeaning named = meaningOfName(definition.name);
    const bool agrees = checkUnit(definition, named, findings);
    checkDisplayUnits(definition, named, findings);
    if (agrees && !named.expression.empty()) {
        if (!definition.base) {
            for (const std::string& reason : named.reasons) {
                findings.add(Code::UnitReading, definition.place, subjectOf(definition),
                             "unit {}: {}", text::quoted(definition.name), reason);
            }
        }
        Unit unit = registerUnit(named.expression, named.isAsWritten ? "name" : "reading",
                                 definition, findings);
        checkFactor(unit, *named.meaning, definition, findings);
        return unit;
    }
    Unit unit;
    if (definition.base && definition.base->factor == 1 && definition.base->offset == 0) {
        const std::string product = units::productText(powersOf(*definition.base));
        unit = registerUnit(product == "1" ? units::unitless : product, "base units", definition,
                            findings);
    }
    if (agrees) {
        findings.add(named.meaning ? Code::UnitOutside : Code::UnitUnknown, definition.place,
                     subjectOf(definition), "unit {} {} and {}", text::quoted(definition.name),
                     !named.meaning               ? unknownText(named)
                     : named.meaning->offset == 0 ? "has a number in its name"
                                                  : "has an offset",
                     unit.id != inheritedUnit ? "is taken for its base units"
                                              : "has no place in the table");
    }
    return unit;
}

} // namespace tvtool::model
