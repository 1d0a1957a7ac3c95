#include "services/errors.h"
#include "services/text.h"
#include "units/unit_lookup.h"

#include <tvtypes/units/unit.h>

namespace TVTypeSys {

int AbstractUnit::getUnitType() const { return 1; }

AbstractUnit* AbstractUnit::clone() const {
    return std::make_unique<AbstractUnit>(*this).release();
}

double AbstractUnit::getScalingFactorToConvertTo(const UnitBase& other) const {
    if (compare(other) != 0 &&
        (!compatibleWithUnit(other) || !dimensionallyEquivalentWithUnit(other))) {
        throwError(units::UnitsNotSeparatedByScalingFactor(narrow(name), narrow(other.name)));
    }
    return 1.0;
}

bool AbstractUnit::compatibleWithUnit(const UnitBase& other) const {
    return other.getUnitType() == 1;
}

bool AbstractUnit::equivalentToUnit(const UnitBase& other) const {
    if (this == &other) {
        return true;
    }
    const UnitBase& unspecified = UnitFactory::getDefaultAbstractUnit();
    if (compare(unspecified) == 0 || other.compare(unspecified) == 0) {
        return true;
    }
    if (!compatibleWithUnit(other)) {
        return false;
    }
    if (!name.empty() && !other.name.empty()) {
        return name == other.name;
    }
    if (!symbol.empty() && !other.symbol.empty()) {
        return symbol == other.symbol;
    }
    return dimensionallyEquivalentWithUnit(other);
}

const std::u16string& AbstractUnit::getBaseUnitSymbol(unsigned long index) const {
    return UnitDatabase::getUnitDatabase()->getFundamentalAbstractUnitSymbol(index);
}

UnitBase::Reference AbstractUnit::getFirstMatchingUnitInDatabase(const std::u16string& text) const {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    if (const UnitBase* found = UnitLookup::abstract(database, text).first) {
        return boost::cref(*found);
    }
    ReferenceSet fundamental;
    database.addMatchingFundamentalAbstractUnitToList(text, fundamental);
    if (fundamental.empty()) {
        throwError(units::UnitNotInDatabase(narrow(text)));
    }
    return *fundamental.begin();
}

std::string AbstractUnit::createUniqueUnitID() const { return "dummy Abstract Unit ID"; }

} // namespace TVTypeSys
