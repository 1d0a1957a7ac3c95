#include "units/fundamental_units.h"

#include "services/text.h"

namespace TVTypeSys {

namespace {

struct Texts {
    const char* expression;
    const char* symbol;
    const char* name;
};

// clang-format off
constexpr struct { Texts abstract; Texts concrete; } quantities[] = {
    {{"Mass",                      "M",      "mass"},                      {"kg",   "kg",  "Kilogram"}},
    {{"Length",                    "L",      "length"},                    {"m",    "m",   "Metres"}},
    {{"Time",                      "T",      "time"},                      {"s",    "s",   "Seconds"}},
    {{"Electric_Current",          "I",      "electric_current"},          {"A",    "A",   "Amperes"}},
    {{"Thermodynamic_Temperature", "Temp",   "thermodynamic_temperature"}, {"K",    "K",   "Kelvin"}},
    {{"Amount_Of_Substance",       "N",      "amount_of_substance"},       {"mol",  "mol", "Moles"}},
    {{"Luminous_Intensity",        "I_v",    "luminous_intensity"},        {"Cd",   "cd",  "Candela"}},
    {{"Memory",                    "memory", "memory"},                    {"Bits", "b",   "bits"}},
};
constexpr Texts dimensionlessQuantities[] = {
    {"Unitless",    "unitless",    "unitless"},
    {"Unspecified", "Unspecified", "Unspecified"},
};
// clang-format on

/// Takes ownership of a unit and sets its texts. The expression of a fundamental unit is never
/// parsed.
UnitBase& add(boost::ptr_vector<UnitBase>& units, UnitBase* unit, const char* symbol,
              const char* name) {
    units.push_back(unit);
    unit->symbol = wide(symbol);
    unit->name = wide(name);
    return *unit;
}

} // namespace

FundamentalUnits::FundamentalUnits() {
    for (const auto& [abstract, concrete] : quantities) {
        const UnitBase::Reference abstractUnit =
            createAndAddAbstractUnit(abstract.expression, abstract.symbol, abstract.name);
        createAndAddConcreteUnit(concrete.expression, concrete.symbol, concrete.name, abstractUnit);
    }
    for (const auto& [expression, symbol, name] : dimensionlessQuantities) {
        createAndAddDimensionlessAbstractUnit(expression, symbol, name);
    }
}

UnitBase::Reference FundamentalUnits::createAndAddAbstractUnit(const char* expression,
                                                               const char* symbol,
                                                               const char* name) {
    UnitBase& unit =
        add(abstractUnits_,
            UnitFactory::createAbstractUnit(wide(expression), Rational::unity, Rational::zero),
            symbol, name);
    const auto reference = boost::cref<UnitBase>(unit);
    unit.addToFundamentalExprAST(reference, {1, 0});
    abstractUnitSet_.insert(reference);
    return reference;
}

void FundamentalUnits::createAndAddConcreteUnit(const char* expression, const char* symbol,
                                                const char* name,
                                                const UnitBase::Reference& abstractUnit) {
    UnitBase& unit = add(
        concreteUnits_,
        UnitFactory::createUnit(wide(expression), Rational::unity, Rational::zero, abstractUnit),
        symbol, name);
    const auto reference = boost::cref<UnitBase>(unit);
    unit.addToFundamentalExprAST(reference, {1, 0});
    concreteUnitSet_.insert(reference);
}

void FundamentalUnits::createAndAddDimensionlessAbstractUnit(const char* expression,
                                                             const char* symbol, const char* name) {
    UnitBase& unit =
        add(dimensionlessAbstractUnits_,
            UnitFactory::createAbstractUnit(wide(expression), Rational::unity, Rational::zero),
            symbol, name);
    for (const UnitBase::Reference& quantity : abstractUnitSet_) {
        unit.addToFundamentalExprAST(quantity, {0, 0});
    }
    dimensionlessAbstractUnitSet_.insert(boost::cref<UnitBase>(unit));
}

} // namespace TVTypeSys
