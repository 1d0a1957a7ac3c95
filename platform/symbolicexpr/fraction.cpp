#include "fraction.h"

#include "bounds.h"
#include "flint.h"

#include <utility>

namespace TV {
namespace {

std::optional<Polynomial> boundedProduct(const Polynomial& a, const Polynomial& b,
                                         const Names& names) {
    if (a.isOne()) {
        return b;
    }
    if (b.isOne()) {
        return a;
    }
    if (!bounds::mayMultiply(a, b)) {
        return std::nullopt;
    }
    if (a.isZero() || b.isZero()) {
        return Polynomial();
    }
    Polynomial product = a.terms().size() == 1   ? multiply(b, a.terms().front(), names)
                         : b.terms().size() == 1 ? multiply(a, b.terms().front(), names)
                                                 : multiply(a, b, names);
    if (product.terms().size() > bounds::maximumTerms) {
        return std::nullopt;
    }
    return product;
}

/// Divides both by their greatest common divisor, and gives it. `b` is not zero.
Polynomial reduce(Polynomial& a, Polynomial& b, const Names& names) {
    if (b.isOne()) {
        return Integer(1);
    }
    if (a.isZero()) {
        return std::exchange(b, Integer(1));
    }
    if (a.terms().size() > 1 && b.terms().size() > 1) {
        return takeCommonDivisor(a, b, names);
    }
    // What divides a single term is a single term.
    const Term left = a.content(names);
    const Term right = b.content(names);
    const Term common{greatestCommonDivisor(left.coefficient, right.coefficient),
                      greatestCommonDivisor(left.monomial, right.monomial, names)};
    a.divideExactlyBy(common);
    b.divideExactlyBy(common);
    return Polynomial(std::vector<Term>{common});
}

void makeDenominatorPositive(Fraction& fraction) {
    if (fraction.denominator.isNegative()) {
        fraction.numerator.negate();
        fraction.denominator.negate();
    }
}

/// Leaves in front what all are together; by twos, so that most of what is combined is small. Ends
/// at once where two cannot be combined.
template <class Item, class Combine>
bool combineByTwos(std::vector<Item>& items, const Combine& combine) {
    for (std::size_t step = 1; step < items.size(); step *= 2) {
        for (std::size_t i = 0; i + step < items.size(); i += 2 * step) {
            if (!combine(items[i], items[i + step])) {
                return false;
            }
        }
    }
    return true;
}

/// The sum of fractions whose denominators are numbers.
Fraction sumOverNumbers(const std::vector<Addend>& addends, const Names& names) {
    Integer denominator = 1;
    for (const Addend& addend : addends) {
        if (!addend.fraction->denominator.isOne()) {
            denominator = leastCommonMultiple(denominator, addend.fraction->denominator.constant());
        }
    }
    std::vector<Polynomial> numerators;
    for (const Addend& addend : addends) {
        Integer factor = denominator;
        factor.divideExactly(addend.fraction->denominator.constant());
        factor *= addend.multiplicity;
        if (!factor.isZero()) {
            numerators.push_back(addend.fraction->numerator);
            numerators.back().multiplyBy(factor);
        }
    }
    Fraction result;
    if (!numerators.empty()) {
        combineByTwos(numerators, [&](Polynomial& a, Polynomial& b) {
            a = add(std::move(a), std::move(b), names);
            return true;
        });
        result = {std::move(numerators.front()), std::move(denominator)};
        reduce(result.numerator, result.denominator, names);
    }
    return result;
}

std::optional<Fraction> sumOfTwo(const Fraction& a, const Fraction& b, const Names& names) {
    // With both denominators divided by what they have in common, only that can have a divisor in
    // common with the numerator.
    Polynomial left = a.denominator;
    Polynomial right = b.denominator;
    Polynomial common = reduce(left, right, names);
    const auto first = boundedProduct(a.numerator, right, names);
    const auto second = boundedProduct(b.numerator, left, names);
    const auto distinct = boundedProduct(left, right, names);
    if (!first || !second || !distinct) {
        return std::nullopt;
    }
    Polynomial numerator = add(*first, *second, names);
    reduce(numerator, common, names);
    auto denominator = boundedProduct(*distinct, common, names);
    if (!denominator) {
        return std::nullopt;
    }
    if (numerator.isZero()) {
        return Fraction();
    }
    return Fraction{std::move(numerator), std::move(*denominator)};
}

} // namespace

std::optional<Fraction> sum(const std::vector<Addend>& addends, const Names& names) {
    std::vector<Addend> overNumbers;
    std::vector<Fraction> others;
    for (const Addend& addend : addends) {
        if (addend.fraction->denominator.isConstant()) {
            overNumbers.push_back(addend);
        } else if (!addend.multiplicity.isZero()) {
            others.push_back(*addend.fraction);
            others.back().numerator.multiplyBy(addend.multiplicity);
            reduce(others.back().numerator, others.back().denominator, names);
        }
    }
    if (others.empty() || !overNumbers.empty()) {
        others.push_back(sumOverNumbers(overNumbers, names));
    }
    const bool done = combineByTwos(others, [&](Fraction& a, const Fraction& b) {
        auto both = sumOfTwo(a, b, names);
        if (both) {
            a = std::move(*both);
        }
        return both.has_value();
    });
    if (!done) {
        return std::nullopt;
    }
    return std::move(others.front());
}

std::optional<Fraction> product(const Fraction& a, const Fraction& b, const Names& names) {
    Fraction left = a;
    Fraction right = b;
    reduce(left.numerator, right.denominator, names);
    reduce(right.numerator, left.denominator, names);
    auto numerator = boundedProduct(left.numerator, right.numerator, names);
    auto denominator = boundedProduct(left.denominator, right.denominator, names);
    if (!numerator || !denominator) {
        return std::nullopt;
    }
    return Fraction{std::move(*numerator), std::move(*denominator)};
}

std::optional<Fraction> quotient(const Fraction& a, const Fraction& b, const Names& names) {
    if (b.numerator.isZero()) {
        return std::nullopt;
    }
    Fraction inverse{b.denominator, b.numerator};
    makeDenominatorPositive(inverse);
    return product(a, inverse, names);
}

} // namespace TV
