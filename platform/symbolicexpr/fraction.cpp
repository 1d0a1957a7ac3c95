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

std::optional<Polynomial> boundedPower(const Polynomial& base, std::uint32_t exponent,
                                       const Names& names) {
    if (exponent == 1 || base.isOne()) {
        return base;
    }
    if (bounds::mayRaise(base, exponent)) {
        Polynomial result = raise(base, exponent, names);
        if (result.terms().size() > bounds::maximumTerms) {
            return std::nullopt;
        }
        return result;
    }
    // It may have far fewer terms than any such power could have.
    std::optional<Polynomial> half = boundedPower(base, exponent / 2, names);
    std::optional<Polynomial> result = half ? boundedProduct(*half, *half, names) : std::nullopt;
    return result && exponent % 2 != 0 ? boundedProduct(*result, base, names) : result;
}

/// The greatest common divisor of a term and a polynomial, which is a term.
Term commonTerm(const Term& term, const Polynomial& polynomial, const Names& names) {
    Term common = term;
    if (common.coefficient.isNegative()) {
        common.coefficient.negate();
    }
    for (const Term& other : polynomial.terms()) {
        if (!common.coefficient.isOne()) {
            common.coefficient = greatestCommonDivisor(common.coefficient, other.coefficient);
        }
        if (common.monomial.degree != 0) {
            common.monomial = greatestCommonDivisor(common.monomial, other.monomial, names);
        }
    }
    return common;
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
    const bool isFirst = a.terms().size() == 1;
    const Term common = commonTerm((isFirst ? a : b).terms().front(), isFirst ? b : a, names);
    a.divideExactlyBy(common);
    b.divideExactlyBy(common);
    return Polynomial(Polynomial::Terms{common});
}

void makeDenominatorPositive(Fraction& fraction) {
    if (fraction.denominator.isNegative()) {
        fraction.numerator.negate();
        fraction.denominator.negate();
    }
}

/// Leaves in `first` what all are together; by halves, so that most of what is combined is small.
/// Ends at once where two cannot be combined.
template <class Iterator, class Combine>
bool combine(Iterator first, Iterator last, const Combine& combineTwo) {
    if (last - first < 2) {
        return true;
    }
    const Iterator middle = first + (last - first) / 2;
    return combine(first, middle, combineTwo) && combine(middle, last, combineTwo) &&
           combineTwo(*first, *middle);
}

/// The same of what can be beyond all bounds.
template <class CombineTwo>
std::optional<Fraction> combined(std::vector<Fraction> items, const CombineTwo& combineTwo) {
    const auto replaceFirst = [&](Fraction& a, const Fraction& b) {
        auto both = combineTwo(a, b);
        if (both) {
            a = std::move(*both);
        }
        return both.has_value();
    };
    return combine(items.begin(), items.end(), replaceFirst)
               ? std::optional(std::move(items.front()))
               : std::nullopt;
}

/// The sum of those fractions whose denominators are numbers.
Fraction sumOverNumbers(const std::vector<Multiple>& addends, const Names& names) {
    Integer denominator = 1;
    for (const Multiple& addend : addends) {
        if (addend.fraction->denominator.isConstant() && !addend.fraction->denominator.isOne()) {
            denominator = leastCommonMultiple(denominator, addend.fraction->denominator.constant());
        }
    }
    std::vector<Polynomial> numerators;
    numerators.reserve(addends.size());
    for (const Multiple& addend : addends) {
        const Polynomial& own = addend.fraction->denominator;
        if (own.isConstant() && !addend.times.isZero()) {
            Integer factor = addend.times;
            if (!denominator.isOne()) {
                Integer missing = denominator;
                missing.divideExactly(own.constant());
                factor *= missing;
            }
            numerators.push_back(addend.fraction->numerator);
            numerators.back().multiplyBy(factor);
        }
    }
    Fraction result;
    if (!numerators.empty()) {
        combine(numerators.begin(), numerators.end(), [&](Polynomial& a, Polynomial& b) {
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

std::optional<Fraction> power(const Fraction& base, const Integer& times, const Names& names) {
    if (times.isOne()) {
        return base;
    }
    const auto exponent = times.asExponent();
    if (!exponent) {
        return std::nullopt;
    }
    auto numerator = boundedPower(base.numerator, *exponent, names);
    auto denominator = boundedPower(base.denominator, *exponent, names);
    if (!numerator || !denominator) {
        return std::nullopt;
    }
    return Fraction{std::move(*numerator), std::move(*denominator)};
}

std::optional<Fraction> productOfTwo(const Fraction& a, const Fraction& b, const Names& names) {
    if (a.denominator.isOne() && b.denominator.isOne()) {
        auto whole = boundedProduct(a.numerator, b.numerator, names);
        return whole ? std::optional(Fraction{std::move(*whole)}) : std::nullopt;
    }
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

} // namespace

std::optional<Fraction> sum(const std::vector<Multiple>& addends, const Names& names) {
    std::vector<Fraction> others;
    for (const Multiple& addend : addends) {
        if (!addend.fraction->denominator.isConstant() && !addend.times.isZero()) {
            others.push_back(*addend.fraction);
            others.back().numerator.multiplyBy(addend.times);
            reduce(others.back().numerator, others.back().denominator, names);
        }
    }
    if (others.empty()) {
        return sumOverNumbers(addends, names);
    }
    others.push_back(sumOverNumbers(addends, names));
    return combined(std::move(others),
                    [&](const Fraction& a, const Fraction& b) { return sumOfTwo(a, b, names); });
}

std::optional<Fraction> product(const std::vector<Multiple>& factors, const Names& names) {
    std::vector<Fraction> powers;
    powers.reserve(factors.size() + 1);
    for (const Multiple& factor : factors) {
        auto raised = power(*factor.fraction, factor.times, names);
        if (!raised) {
            return std::nullopt;
        }
        powers.push_back(std::move(*raised));
    }
    if (powers.empty()) {
        powers.push_back({Integer(1)});
    }
    return combined(std::move(powers), [&](const Fraction& a, const Fraction& b) {
        return productOfTwo(a, b, names);
    });
}

std::optional<Fraction> quotient(const Fraction& a, const Fraction& b, const Names& names) {
    if (b.numerator.isZero()) {
        return std::nullopt;
    }
    Fraction inverse{b.denominator, b.numerator};
    makeDenominatorPositive(inverse);
    return productOfTwo(a, inverse, names);
}

} // namespace TV
