#include "services/text.h"

#include <tvtypes/units/fundamental_units.h>

#include <memory>
#include <utility>

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

void setTexts(UnitBase& unit, const char* symbol, const char* name) {
    unit.symbol = wide(symbol);
    unit.name = wide(name);
}

/// Adds a unit to its owner and to its set.
UnitBase::Reference add(boost::ptr_vector<UnitBase>& owner, UnitBase::ReferenceSet& set,
                        std::unique_ptr<UnitBase> unit) {
    // Reserved first: the unit must not be listed if it cannot be owned.
    owner.reserve(owner.size() + 1);
    const auto reference = boost::cref(*unit);
    set.insert(reference);
    owner.push_back(unit.release());
    return reference;
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

FundamentalUnits::~FundamentalUnits() = default;

AbstractUnit* FundamentalUnits::createAbstractUnit(const char* expression, const char* symbol,
                                                   const char* name) const {
    std::unique_ptr<AbstractUnit> unit(
        UnitFactory::createAbstractUnit(wide(expression), Rational::unity, Rational::zero));
    setTexts(*unit, symbol, name);
    return unit.release();
}

UnitBase::Reference FundamentalUnits::createAndAddAbstractUnit(const char* expression,
                                                               const char* symbol,
                                                               const char* name) {
    std::unique_ptr<UnitBase> unit(createAbstractUnit(expression, symbol, name));
    unit->addToFundamentalExprAST(boost::cref(*unit), {1, 0});
    return add(abstractUnits_, abstractUnitSet_, std::move(unit));
}

void FundamentalUnits::createAndAddConcreteUnit(const char* expression, const char* symbol,
                                                const char* name,
                                                const UnitBase::Reference& abstractUnit) {
    std::unique_ptr<UnitBase> unit(
        UnitFactory::createUnit(wide(expression), Rational::unity, Rational::zero, abstractUnit));
    setTexts(*unit, symbol, name);
    unit->addToFundamentalExprAST(boost::cref(*unit), {1, 0});
    add(concreteUnits_, concreteUnitSet_, std::move(unit));
}

void FundamentalUnits::createAndAddDimensionlessAbstractUnit(const char* expression,
                                                             const char* symbol, const char* name) {
    std::unique_ptr<UnitBase> unit(createAbstractUnit(expression, symbol, name));
    for (const UnitBase::Reference& quantity : abstractUnitSet_) {
        unit->addToFundamentalExprAST(quantity, {0, 0});
    }
    add(dimensionlessAbstractUnits_, dimensionlessAbstractUnitSet_, std::move(unit));
}

} // namespace TVTypeSys
