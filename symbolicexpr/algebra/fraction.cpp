#include "algebra/fraction.h"

#include "algebra/flint_polynomial.h"
#include "algebra/limits.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace TV {
namespace {

std::optional<Polynomial> boundedProduct(const Polynomial& a, const Polynomial& b,
                                         const NameOrder& order) {
    if (a.isOne()) {
        return b;
    }
    if (b.isOne()) {
        return a;
    }
    if (!limits::mayMultiply(a, b)) {
        return std::nullopt;
    }
    if (a.isZero() || b.isZero()) {
        return Polynomial();
    }
    Polynomial product = a.terms().size() == 1   ? multiply(b, a.terms().front(), order)
                         : b.terms().size() == 1 ? multiply(a, b.terms().front(), order)
                                                 : multiply(a, b, order);
    if (product.terms().size() > limits::maximumTerms) {
        return std::nullopt;
    }
    return product;
}

std::optional<Polynomial> boundedPower(const Polynomial& base, std::uint32_t exponent,
                                       const NameOrder& order) {
    if (exponent == 1 || base.isOne()) {
        return base;
    }
    if (limits::mayRaise(base, exponent)) {
        Polynomial result = raise(base, exponent, order);
        if (result.terms().size() > limits::maximumTerms) {
            return std::nullopt;
        }
        return result;
    }
    // Square and multiply: the power may have far fewer terms than the bound of mayRaise.
    std::optional<Polynomial> half = boundedPower(base, exponent / 2, order);
    std::optional<Polynomial> result = half ? boundedProduct(*half, *half, order) : std::nullopt;
    return result && exponent % 2 != 0 ? boundedProduct(*result, base, order) : result;
}

/// Greatest common divisor of a term and a polynomial, which is a term.
Term commonTerm(const Term& term, const Polynomial& polynomial, const NameOrder& order) {
    Term common = term;
    common.internedId = 0;
    if (common.coefficient.isNegative()) {
        common.coefficient.negate();
    }
    for (const Term& other : polynomial.terms()) {
        if (!common.coefficient.isOne()) {
            common.coefficient = greatestCommonDivisor(common.coefficient, other.coefficient);
        }
        if (common.monomial.degree != 0) {
            common.monomial = greatestCommonDivisor(common.monomial, other.monomial, order);
        }
    }
    return common;
}

/// Divides both by their greatest common divisor and returns it. Returns no value, and changes
/// nothing, if it would take too long to compute; this cannot happen if one of them is a single
/// term. \pre `b` is not zero.
std::optional<Polynomial> reduce(Polynomial& a, Polynomial& b, const NameOrder& order) {
    assert(!b.isZero());
    if (b.isOne()) {
        return Integer(1);
    }
    if (a.isZero()) {
        return std::exchange(b, Integer(1));
    }
    if (a.terms().size() > 1 && b.terms().size() > 1) {
        return limits::mayDivide(a, b) ? std::optional(divideByCommonDivisor(a, b, order))
                                       : std::nullopt;
    }
    const bool isFirst = a.terms().size() == 1;
    const Term common = commonTerm((isFirst ? a : b).terms().front(), isFirst ? b : a, order);
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

/// Reduces a range to its first item by divide and conquer, so that most operands are small. Stops
/// and returns false where `combineTwo` does.
template <class Iterator, class Combine>
bool reduceByHalves(Iterator first, Iterator last, const Combine& combineTwo) {
    if (last - first < 2) {
        return true;
    }
    const Iterator middle = first + (last - first) / 2;
    return reduceByHalves(first, middle, combineTwo) && reduceByHalves(middle, last, combineTwo) &&
           combineTwo(*first, *middle);
}

/// The same for an operation that returns no value beyond the limits.
template <class CombineTwo>
std::optional<Fraction> combined(std::vector<Fraction> items, const CombineTwo& combineTwo) {
    const auto replaceFirst = [&](Fraction& a, const Fraction& b) {
        auto both = combineTwo(a, b);
        if (both) {
            a = std::move(*both);
        }
        return both.has_value();
    };
    return reduceByHalves(items.begin(), items.end(), replaceFirst)
               ? std::optional(std::move(items.front()))
               : std::nullopt;
}

/// Least common denominator of the fractions whose denominators are integers. Returns no value if
/// the coefficients over it would exceed the limit, although those of the reduced sum might not.
std::optional<Integer> commonDenominator(const std::vector<Multiple>& addends) {
    Integer denominator = 1;
    std::size_t terms = 0;
    std::size_t largestTimesBits = 0;
    for (const Multiple& addend : addends) {
        const Polynomial& own = addend.fraction->denominator;
        if (own.isConstant()) {
            if (!own.isOne()) {
                denominator = leastCommonMultiple(denominator, own.constant());
            }
            terms += addend.fraction->numerator.terms().size();
            largestTimesBits = std::max(largestTimesBits, addend.times.bits());
            if (terms * (denominator.bits() + largestTimesBits) > limits::maximumBits) {
                return std::nullopt;
            }
        }
    }
    return denominator;
}

/// Sum of the fractions whose denominators are integers.
Fraction sumOverIntegers(const std::vector<Multiple>& addends, const Integer& denominator,
                         const NameOrder& order) {
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
        reduceByHalves(numerators.begin(), numerators.end(), [&](Polynomial& a, Polynomial& b) {
            a = add(std::move(a), std::move(b), order);
            return true;
        });
        result = {std::move(numerators.front()), denominator};
        reduce(result.numerator, result.denominator, order);
    }
    return result;
}

std::optional<Fraction> scaled(const Multiple& addend, const NameOrder& order) {
    if (addend.times.bits() * addend.fraction->numerator.terms().size() > limits::maximumBits) {
        return std::nullopt;
    }
    Fraction fraction = *addend.fraction;
    Polynomial times = addend.times;
    reduce(times, fraction.denominator, order);
    fraction.numerator.multiplyBy(times.constant());
    return fraction;
}

std::optional<Fraction> sumOfTwo(const Fraction& a, const Fraction& b, const NameOrder& order) {
    // Over the least common denominator, only the common divisor of the two denominators can share
    // a factor with the numerator.
    Polynomial left = a.denominator;
    Polynomial right = b.denominator;
    auto common = reduce(left, right, order);
    if (!common) {
        return std::nullopt;
    }
    const auto first = boundedProduct(a.numerator, right, order);
    const auto second = boundedProduct(b.numerator, left, order);
    const auto distinct = boundedProduct(left, right, order);
    if (!first || !second || !distinct) {
        return std::nullopt;
    }
    Polynomial numerator = add(*first, *second, order);
    if (!reduce(numerator, *common, order)) {
        return std::nullopt;
    }
    auto denominator = boundedProduct(*distinct, *common, order);
    if (!denominator) {
        return std::nullopt;
    }
    if (numerator.isZero()) {
        return Fraction();
    }
    return Fraction{std::move(numerator), std::move(*denominator)};
}

std::optional<Fraction> power(const Fraction& base, const Integer& times, const NameOrder& order) {
    if (times.isOne()) {
        return base;
    }
    const auto exponent = times.asExponent();
    if (!exponent) {
        return std::nullopt;
    }
    auto numerator = boundedPower(base.numerator, *exponent, order);
    auto denominator = boundedPower(base.denominator, *exponent, order);
    if (!numerator || !denominator) {
        return std::nullopt;
    }
    return Fraction{std::move(*numerator), std::move(*denominator)};
}

std::optional<Fraction> productOfTwo(const Fraction& a, const Fraction& b, const NameOrder& order) {
    if (a.denominator.isOne() && b.denominator.isOne()) {
        auto whole = boundedProduct(a.numerator, b.numerator, order);
        return whole ? std::optional(Fraction{std::move(*whole)}) : std::nullopt;
    }
    Fraction left = a;
    Fraction right = b;
    if (!reduce(left.numerator, right.denominator, order) ||
        !reduce(right.numerator, left.denominator, order)) {
        return std::nullopt;
    }
    auto numerator = boundedProduct(left.numerator, right.numerator, order);
    auto denominator = boundedProduct(left.denominator, right.denominator, order);
    if (!numerator || !denominator) {
        return std::nullopt;
    }
    return Fraction{std::move(*numerator), std::move(*denominator)};
}

} // namespace

std::optional<Fraction> sum(const std::vector<Multiple>& addends, const NameOrder& order) {
    const auto denominator = commonDenominator(addends);
    std::vector<Fraction> others;
    for (const Multiple& addend : addends) {
        const bool isOverInteger = denominator && addend.fraction->denominator.isConstant();
        if (!isOverInteger && !addend.times.isZero()) {
            auto other = scaled(addend, order);
            if (!other) {
                return std::nullopt;
            }
            others.push_back(std::move(*other));
        }
    }
    if (denominator || others.empty()) {
        others.push_back(denominator ? sumOverIntegers(addends, *denominator, order) : Fraction());
    }
    return combined(std::move(others),
                    [&](const Fraction& a, const Fraction& b) { return sumOfTwo(a, b, order); });
}

std::optional<Fraction> product(const std::vector<Multiple>& factors, const NameOrder& order) {
    assert(!factors.empty());
    std::vector<Fraction> powers;
    powers.reserve(factors.size());
    for (const Multiple& factor : factors) {
        auto raised = power(*factor.fraction, factor.times, order);
        if (!raised) {
            return std::nullopt;
        }
        powers.push_back(std::move(*raised));
    }
    return combined(std::move(powers), [&](const Fraction& a, const Fraction& b) {
        return productOfTwo(a, b, order);
    });
}

std::optional<Fraction> quotient(const Fraction& a, const Fraction& b, const NameOrder& order) {
    if (b.numerator.isZero()) {
        return std::nullopt;
    }
    Fraction inverse{b.denominator, b.numerator};
    makeDenominatorPositive(inverse);
    return productOfTwo(a, inverse, order);
}

} // namespace TV
