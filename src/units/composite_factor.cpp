#include "units/composite_factor.h"

#include "units/unit_lookup.h"
#include "units/wrapping_arithmetic.h"

#include <cassert>
#include <cmath>
#include <cstdint>
#include <optional>

namespace TVTypeSys {

namespace {

bool overflows(int left, int right) {
    return std::int64_t{left} * right != wrappingProduct(left, right);
}

/// Looks the product up among the listed factors. The powers of ten are added apart, as in exact
/// arithmetic.
std::optional<Rational> listedFactor(const UnitDatabase& database, const Terms& terms) {
    double value = 1;
    double exponent = 0;
    for (const auto& [unit, power] : terms) {
        const Rational& factor = unit.get().baseScalingFactor;
        value *= std::pow(static_cast<double>(factor.numerator()) / factor.denominator(), power);
        exponent += static_cast<double>(factor.exponent()) * power;
    }
    return UnitLookup::compoundFactor(database, value, exponent);
}

} // namespace

void multiplyFactors(const UnitDatabase& database, const Terms& terms, Rational& product) {
    assert(product == Rational::unity);
    bool wrapped = false;
    for (const auto& [unit, power] : terms) {
        const Rational& factor = unit.get().baseScalingFactor;
        if (power == 0 || factor == Rational::unity) {
            continue;
        }
        const Rational raised = factor ^ power;
        if (!wrapped && (overflows(product.numerator(), raised.numerator()) ||
                         overflows(product.denominator(), raised.denominator()))) {
            wrapped = true;
            if (const std::optional<Rational> listed = listedFactor(database, terms)) {
                product = *listed;
                return;
            }
        }
        product *= raised;
    }
}

} // namespace TVTypeSys
