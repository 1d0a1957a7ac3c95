#include "algebra/fraction.h"

#include "algebra/bounds.h"
#include "algebra/flint.h"

#include <algorithm>
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
    common.written = 0;
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

/// Divides both by their greatest common divisor, and gives it. `b` is not zero. None, with both as
/// they were, if it takes too long to find; it is found if one of them is a term.
std::optional<Polynomial> reduce(Polynomial& a, Polynomial& b, const Names& names) {
    if (b.isOne()) {
        return Integer(1);
    }
    if (a.isZero()) {
        return std::exchange(b, Integer(1));
    }
    if (a.terms().size() > 1 && b.terms().size() > 1) {
        return bounds::mayDivide(a, b) ? std::optional(takeCommonDivisor(a, b, names))
                                       : std::nullopt;
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

/// The common denominator of those fractions whose denominators are numbers. None if with it the
/// numbers would be beyond all bounds, although those of the sum need not be.
std::optional<Integer> commonDenominator(const std::vector<Multiple>& addends) {
    Integer denominator = 1;
    std::size_t terms = 0;
    std::size_t bitsOfTimes = 0;
    for (const Multiple& addend : addends) {
        const Polynomial& own = addend.fraction->denominator;
        if (own.isConstant()) {
            if (!own.isOne()) {
                denominator = leastCommonMultiple(denominator, own.constant());
            }
            terms += addend.fraction->numerator.terms().size();
            bitsOfTimes = std::max(bitsOfTimes, addend.times.bits());
            if (terms * (denominator.bits() + bitsOfTimes) > bounds::maximumBits) {
                return std::nullopt;
            }
        }
    }
    return denominator;
}

/// The sum of those fractions whose denominators are numbers.
Fraction sumOverNumbers(const std::vector<Multiple>& addends, const Integer& denominator,
                        const Names& names) {
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
        result = {std::move(numerators.front()), denominator};
        reduce(result.numerator, result.denominator, names);
    }
    return result;
}

std::optional<Fraction> multiplied(const Multiple& addend, const Names& names) {
    if (addend.times.bits() * addend.fraction->numerator.terms().size() > bounds::maximumBits) {
        return std::nullopt;
    }
    Fraction fraction = *addend.fraction;
    Polynomial times = addend.times;
    reduce(times, fraction.denominator, names);
    fraction.numerator.multiplyBy(times.constant());
    return fraction;
}

std::optional<Fraction> sumOfTwo(const Fraction& a, const Fraction& b, const Names& names) {
    // With both denominators divided by what they have in common, only that can have a divisor in
    // common with the numerator.
    Polynomial left = a.denominator;
    Polynomial right = b.denominator;
    auto common = reduce(left, right, names);
    if (!common) {
        return std::nullopt;
    }
    const auto first = boundedProduct(a.numerator, right, names);
    const auto second = boundedProduct(b.numerator, left, names);
    const auto distinct = boundedProduct(left, right, names);
    if (!first || !second || !distinct) {
        return std::nullopt;
    }
    Polynomial numerator = add(*first, *second, names);
    if (!reduce(numerator, *common, names)) {
        return std::nullopt;
    }
    auto denominator = boundedProduct(*distinct, *common, names);
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
    if (!reduce(left.numerator, right.denominator, names) ||
        !reduce(right.numerator, left.denominator, names)) {
        return std::nullopt;
    }
    auto numerator = boundedProduct(left.numerator, right.numerator, names);
    auto denominator = boundedProduct(left.denominator, right.denominator, names);
    if (!numerator || !denominator) {
        return std::nullopt;
    }
    return Fraction{std::move(*numerator), std::move(*denominator)};
}

} // namespace

std::optional<Fraction> sum(const std::vector<Multiple>& addends, const Names& names) {
    const auto denominator = commonDenominator(addends);
    std::vector<Fraction> others;
    for (const Multiple& addend : addends) {
        const bool isOverNumber = denominator && addend.fraction->denominator.isConstant();
        if (!isOverNumber && !addend.times.isZero()) {
            auto other = multiplied(addend, names);
            if (!other) {
                return std::nullopt;
            }
            others.push_back(std::move(*other));
        }
    }
    if (denominator || others.empty()) {
        others.push_back(denominator ? sumOverNumbers(addends, *denominator, names) : Fraction());
    }
    return combined(std::move(others),
                    [&](const Fraction& a, const Fraction& b) { return sumOfTwo(a, b, names); });
}

std::optional<Fraction> product(const std::vector<Multiple>& factors, const Names& names) {
    std::vector<Fraction> powers;
    powers.reserve(factors.size());
    for (const Multiple& factor : factors) {
        auto raised = power(*factor.fraction, factor.times, names);
        if (!raised) {
            return std::nullopt;
        }
        powers.push_back(std::move(*raised));
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
