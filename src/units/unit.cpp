#include "services/errors.h"
#include "services/text.h"
#include "units/unit_lookup.h"

#include <tvtypes/units/unit.h>

#include <cstring>

namespace TVTypeSys {

Unit::Unit(const std::u16string& unitExpression, const Rational& unitScaling,
           const Rational& unitOffset, Reference measured)
    : UnitBase(unitExpression, unitScaling, unitOffset), abstractUnit(measured) {}

Unit::Unit(int unitId, const std::u16string& unitName, const std::u16string& unitExpression,
           const std::string& unitDisplay, const Rational& unitScaling, const Rational& unitOffset,
           Reference measured)
    : UnitBase(unitId, unitName, unitExpression, unitDisplay, unitScaling, unitOffset),
      abstractUnit(measured) {}

int Unit::getUnitType() const { return 2; }

Unit* Unit::clone() const { return std::make_unique<Unit>(*this).release(); }

double Unit::getScalingFactorToConvertTo(const UnitBase& other) const {
    // Names of different length differ: most calls end this comparison here.
    if (name.size() == other.name.size() && compare(other) == 0) {
        return 1.0;
    }
    if (!compatibleWithUnit(other) || !dimensionallyEquivalentWithUnit(other)) {
        throwError(units::UnitsNotSeparatedByScalingFactor(narrow(name), narrow(other.name)));
    }
    return baseScalingFactor / other.baseScalingFactor;
}

bool Unit::compatibleWithUnit(const UnitBase& other) const {
    if (other.getUnitType() != 2) {
        return false;
    }
    const auto& measure = static_cast<const Unit&>(other);
    const char* const key = compatibilityKey.c_str();
    const char* const otherKey = measure.compatibilityKey.c_str();
    // Nearly all keys are empty.
    return *key == *otherKey && (*key == '\0' || std::strcmp(key, otherKey) == 0) &&
           abstractUnit.get().equivalentToUnit(measure.abstractUnit);
}

bool Unit::equivalentToUnit(const UnitBase& other) const {
    if (this == &other) {
        return true;
    }
    return compatibleWithUnit(other) && scaling == other.scaling &&
           baseScalingFactor == other.baseScalingFactor &&
           (expression == other.expression || dimensionallyEquivalentWithUnit(other));
}

const std::u16string& Unit::getBaseUnitSymbol(unsigned long index) const {
    return UnitDatabase::getUnitDatabase()->getFundamentalUnitSymbol(index);
}

UnitBase::Reference Unit::getFirstMatchingUnitInDatabase(const std::u16string& text) const {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    if (const UnitBase* found = UnitLookup::concrete(database, text).first) {
        return boost::cref(*found);
    }
    ReferenceSet fundamental;
    database.addMatchingFundamentalUnitToList(text, fundamental);
    if (fundamental.empty()) {
        throwError(units::UnitNotInDatabase(narrow(text)));
    }
    return *fundamental.begin();
}

std::string Unit::createUniqueUnitID() const { return "dummy Concrete Unit ID"; }

bool Unit::isCommonSubUnit() const { return commonSubUnit; }

void Unit::addOwnerUnitSystem(const std::u16string& systemName) {
    if (UnitSystem* system = UnitDatabase::getUnitDatabase()->getUnitSystem(systemName)) {
        ownerUnitSystems.push_back(system);
    }
}

} // namespace TVTypeSys
