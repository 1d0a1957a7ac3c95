#include "units/unit_lookup.h"

#include "units/unit_repository.h"

namespace TVTypeSys {

UnitMatch UnitLookup::concrete(const UnitDatabase& database, std::u16string_view text) {
    return database.units_->match(text);
}

UnitMatch UnitLookup::abstract(const UnitDatabase& database, std::u16string_view text) {
    return database.abstractUnits_->match(text);
}

std::optional<Rational> UnitLookup::compoundFactor(const UnitDatabase& database, double value,
                                                   double exponent) {
    return database.units_->compoundFactors().find(value, exponent);
}

unsigned UnitLookup::generation() {
    return UnitDatabase::generation_.load(std::memory_order_relaxed);
}

} // namespace TVTypeSys
