#include "services/errors.h"
#include "services/text.h"
#include "units/canonical_form.h"
#include "units/unit_lookup.h"
#include "units/wrapping_arithmetic.h"

#include <tvtypes/units/expression.h>
#include <tvtypes/units/unit.h>

#include <algorithm>
#include <new>
#include <ostream>

namespace TVTypeSys {

namespace {

/// Three-way lexicographic comparison of code units: -1, 0 or 1.
int threeWayCompare(const std::u16string& a, const std::u16string& b) {
    const int difference = a.compare(b);
    return (difference > 0) - (difference < 0);
}

void add(UnitBase::TermMap& terms, UnitBase::Reference unit, UnitBase::UnitExprTermInfo info) {
    const auto [entry, isNew] = terms.try_emplace(unit, info);
    if (!isNew) {
        entry->second.power = wrappingSum(entry->second.power, info.power);
        entry->second.secondary = wrappingSum(entry->second.secondary, info.secondary);
    }
}

} // namespace

UnitBase::UnitBase(const std::u16string& unitExpression, const Rational& unitScaling,
                   const Rational& unitOffset)
    : expression(unitExpression),
      scaling(unitScaling),
      offset(unitOffset),
      baseScalingFactor(Rational::unity) {}

UnitBase::UnitBase(int unitId, const std::u16string& unitName, const std::u16string& unitExpression,
                   const std::string& unitDisplay, const Rational& unitScaling,
                   const Rational& unitOffset)
    : id(unitId),
      name(unitName),
      display(unitDisplay),
      expression(unitExpression),
      scaling(unitScaling),
      offset(unitOffset),
      baseScalingFactor(Rational::unity) {}

UnitBase::~UnitBase() = default;

int UnitBase::getUnitType() const { return 0; }

void UnitBase::setId(int newId) { id = newId; }

int UnitBase::getId() const { return id; }

void UnitBase::parseExpressionAndGenerateAST() {
    Monomial terms;
    if (!parseUnitExpr(expression, terms)) {
        throwError(units::ParsingError(narrow(expression)));
    }
    addTerms(terms);
}

void UnitBase::addTerms(const Monomial& terms) {
    // Empty, unless the unit is parsed again.
    TermMap previousTerms = exprTermMap;
    TermMap previousForm = fundamentalExprAST;
    Rational previousFactor = Rational::unity;
    previousFactor = baseScalingFactor; // with its flag
    try {
        for (std::size_t i = 0; i < terms.names.size(); ++i) {
            const Reference term = getFirstMatchingUnitInDatabase(terms.names[i]);
            addUnitInfo(term, {terms.powers[i], 0});
            addToCanonicalForm(*this, term, terms.powers[i]);
            updateBaseScalingFactor(term.get().baseScalingFactor, terms.powers[i]);
        }
        updateBaseScalingFactor(scaling, 1);
        if (scaling.precision() == 1) {
            reportWarning(units::LossOfPrecision(narrow(symbol)));
        }
    } catch (const std::bad_alloc&) {
        exprTermMap.swap(previousTerms);
        fundamentalExprAST.swap(previousForm);
        baseScalingFactor = previousFactor;
        throw;
    }
}

void UnitBase::print(std::ostream& stream) const {
    stream << "Unit : '" << narrow(expression) << "'" << std::endl;
}

void UnitBase::displayCanonicalForm(std::ostream& stream) const {
    for (const auto& [fundamental, info] : fundamentalExprAST) {
        stream << narrow(fundamental.get().symbol) << "^" << info.power;
    }
}

int UnitBase::compare(const UnitBase& other) const {
    if (this == &other) {
        return 0;
    }
    if (const int byName = threeWayCompare(name, other.name)) {
        return byName;
    }
    if (const int bySymbol = threeWayCompare(symbol, other.symbol)) {
        return bySymbol;
    }
    if (scaling == other.scaling) {
        return threeWayCompare(expression, other.expression);
    }
    return other.scaling / scaling > 1.0 ? 1 : 0;
}

bool UnitBase::dimensionallyEquivalentWithUnit(const UnitBase& other) const {
    std::size_t remaining = fundamentalExprAST.size();
    if (remaining != other.fundamentalExprAST.size()) {
        return false;
    }
    auto left = fundamentalExprAST.begin();
    auto right = other.fundamentalExprAST.begin();
    for (; remaining != 0; --remaining) {
        const auto& [unit, info] = *left;
        const auto& [otherUnit, otherInfo] = *right;
        // Almost always the same object: a fundamental unit of the database.
        const bool isSame = unit.get_pointer() == otherUnit.get_pointer();
        if (info.power != otherInfo.power || info.secondary != otherInfo.secondary ||
            !(isSame || unit.get().compare(otherUnit) == 0)) {
            return false;
        }
        if (remaining > 1) { // a step beyond the last node climbs the whole tree
            ++left;
            ++right;
        }
    }
    return true;
}

void UnitBase::addUnitInfo(Reference unit, const UnitExprTermInfo& info) {
    add(exprTermMap, unit, info);
}

void UnitBase::addToFundamentalExprAST(Reference unit, UnitExprTermInfo info) {
    add(fundamentalExprAST, unit, info);
}

void UnitBase::updateBaseScalingFactor(const Rational& factor, int power) {
    if (factor != Rational::unity && power != 0) {
        baseScalingFactor *= factor ^ power;
    }
}

bool UnitBase::isValidUnitName(const std::u16string& text) {
    return UnitLookup::concrete(*UnitDatabase::getUnitDatabase(), text).count != 0;
}

bool UnitBase::isValidStringForUnitName(const std::u16string& text) { return isAlphanumeric(text); }

bool UnitBase::isValidUnitExpr(const std::u16string& text) {
    Monomial terms;
    return parseUnitExpr(text, terms) &&
           std::all_of(terms.names.begin(), terms.names.end(), isValidUnitName);
}

std::ostream& operator<<(std::ostream& stream, const UnitBase& unit) {
    unit.print(stream);
    return stream;
}

} // namespace TVTypeSys
