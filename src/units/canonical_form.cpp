#include "units/canonical_form.h"

#include "units/wrapping_arithmetic.h"

namespace TVTypeSys {

void addTerm(UnitBase& unit, UnitBase::Reference term, int power) {
    const UnitBase& other = term;
    unit.addUnitInfo(term, {power, 0});
    if (other.offset == Rational::zero) {
        for (const auto& [fundamental, info] : other.fundamentalExprAST) {
            unit.addToFundamentalExprAST(fundamental, {wrappingProduct(power, info.power), 0});
        }
    } else {
        unit.addToFundamentalExprAST(term, {power, 0});
    }
}

} // namespace TVTypeSys
