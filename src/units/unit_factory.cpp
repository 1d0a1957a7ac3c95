#include "services/text.h"

#include <tvtypes/units/database.h>
#include <tvtypes/units/unit.h>

#include <memory>

namespace TVTypeSys {

namespace {

constexpr const char* unspecified = "Unspecified";

} // namespace

Unit* UnitFactory::createUnit(int id, const std::u16string& name, const std::u16string& expression,
                              const std::string& display, const Rational& scaling,
                              const Rational& offset, const std::vector<std::u16string>& aliases,
                              const std::string& compatibilityKey,
                              const std::vector<std::u16string>& unitSystemNames,
                              bool commonSubUnit, const UnitBase::Reference& abstractUnit) {
    auto unit =
        std::make_unique<Unit>(id, name, expression, display, scaling, offset, abstractUnit);
    unit->aliases = aliases;
    for (const std::u16string& systemName : unitSystemNames) {
        unit->addOwnerUnitSystem(systemName);
    }
    unit->compatibilityKey = compatibilityKey;
    unit->commonSubUnit = commonSubUnit;
    return unit.release();
}

Unit* UnitFactory::createUnit(const std::u16string& expression, const Rational& scaling,
                              const Rational& offset, const UnitBase::Reference& abstractUnit) {
    return std::make_unique<Unit>(expression, scaling, offset, abstractUnit).release();
}

AbstractUnit* UnitFactory::createAbstractUnit(int id, const std::u16string& name,
                                              const std::u16string& expression,
                                              const std::string& display, const Rational& scaling,
                                              const Rational& offset,
                                              const std::vector<std::u16string>& aliases) {
    auto unit = std::make_unique<AbstractUnit>(id, name, expression, display, scaling, offset);
    unit->aliases = aliases;
    return unit.release();
}

AbstractUnit* UnitFactory::createAbstractUnit(const std::u16string& expression,
                                              const Rational& scaling, const Rational& offset) {
    return std::make_unique<AbstractUnit>(expression, scaling, offset).release();
}

UnitBase::Reference UnitFactory::getDefaultAbstractUnit() {
    // The default units are never destroyed: destructors of static objects may use units.
    static const AbstractUnit& unit =
        *createAbstractUnit(wide(unspecified), Rational::unity, Rational::zero);
    return boost::cref<UnitBase>(unit);
}

UnitBase::Reference UnitFactory::getDefaultUnit() {
    static const Unit& unit =
        *createUnit(wide(unspecified), Rational::unity, Rational::zero, getDefaultAbstractUnit());
    return boost::cref<UnitBase>(unit);
}

} // namespace TVTypeSys
