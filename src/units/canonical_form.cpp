#include "units/canonical_form.h"

#include "units/wrapping_arithmetic.h"

namespace TVTypeSys {

namespace {

/// Adds the powers of another canonical form, times `power`. Both are in the order of
/// UnitBase::compare(), so they are merged in one pass.
void addForm(UnitBase::TermMap& form, const UnitBase::TermMap& added, int power) {
    const UnitBase::TermMap::key_compare less;
    auto position = form.begin();
    for (const auto& [unit, info] : added) {
        const int product = wrappingProduct(power, info.power);
        while (position != form.end() && less(position->first, unit)) {
            ++position;
        }
        if (position != form.end() && !less(unit, position->first)) {
            position->second.power = wrappingSum(position->second.power, product);
        } else {
            form.emplace_hint(position, unit, UnitBase::UnitExprTermInfo{product, 0});
        }
    }
}

} // namespace

void addToCanonicalForm(UnitBase& unit, UnitBase::Reference term, int power) {
    const UnitBase& other = term;
    if (other.offset == Rational::zero) {
        addForm(unit.fundamentalExprAST, other.fundamentalExprAST, power);
    } else {
        unit.addToFundamentalExprAST(term, {power, 0});
    }
}

} // namespace TVTypeSys
