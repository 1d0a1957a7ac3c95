#include "algebra/bounds.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <bit>
#include <vector>

namespace TV::bounds {
namespace {

/// How many different monomials a product is computed with, although all but maximumTerms of them
/// have to cancel.
constexpr std::size_t maximumMonomials = std::size_t(1) << 16;
/// Of these with a number for each name in each.
constexpr std::size_t maximumPowers = std::size_t(1) << 24;
/// Of a product, were all its terms of the highest degree.
constexpr std::size_t maximumFactorsOnTheWay = maximumFactors * 4;

std::size_t bitsOfLargest(const Polynomial& polynomial) {
    std::size_t bits = 0;
    for (const Term& term : polynomial.terms()) {
        bits = std::max(bits, term.coefficient.bits());
    }
    return bits;
}

bool haveOneSign(const Polynomial& polynomial) {
    const auto& terms = polynomial.terms();
    return std::all_of(terms.begin(), terms.end(), [&](const Term& term) {
        return term.coefficient.isNegative() == terms.front().coefficient.isNegative();
    });
}

/// A number for a monomial, such that that of a product is the sum of those of its factors.
std::uint64_t numberOf(const Monomial& monomial) {
    std::uint64_t number = 0;
    for (const Monomial::Factor& factor : monomial.factors) {
        std::uint64_t x = (factor.name + 1) * 0x9e3779b97f4a7c15ULL;
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
        x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
        number += (x ^ (x >> 31)) * factor.power;
    }
    return number;
}

std::vector<std::uint64_t> numbersOf(const Polynomial& polynomial) {
    std::vector<std::uint64_t> numbers;
    numbers.reserve(polynomial.terms().size());
    for (const Term& term : polynomial.terms()) {
        numbers.push_back(numberOf(term.monomial));
    }
    return numbers;
}

/// How many different monomials the products of the terms have, counted up to maximumMonomials + 1.
std::size_t countMonomials(const Polynomial& a, const Polynomial& b) {
    constexpr std::size_t size = maximumMonomials * 2;
    constexpr std::uint64_t none = 0;
    std::vector<std::uint64_t> seen(size, none);
    const std::vector<std::uint64_t> left = numbersOf(a);
    const std::vector<std::uint64_t> right = numbersOf(b);
    std::size_t count = 0;
    for (const std::uint64_t x : left) {
        for (const std::uint64_t y : right) {
            const std::uint64_t number = std::max<std::uint64_t>(x + y, 1);
            std::size_t place = (number >> 40) % size;
            while (seen[place] != none && seen[place] != number) {
                place = (place + 1) % size;
            }
            if (seen[place] == none) {
                seen[place] = number;
                if (++count > maximumMonomials) {
                    return count;
                }
            }
        }
    }
    return count;
}

std::size_t countNames(const Polynomial& a, const Polynomial& b) {
    boost::unordered_flat_set<std::uint32_t> names;
    for (const Polynomial* polynomial : {&a, &b}) {
        for (const Term& term : polynomial->terms()) {
            for (const Monomial::Factor& factor : term.monomial.factors) {
                names.insert(factor.name);
            }
        }
    }
    return names.size();
}

bool holds(const Polynomial& polynomial) {
    if (polynomial.terms().size() > maximumTerms) {
        return false;
    }
    std::size_t factors = 0;
    std::size_t bits = 0;
    for (const Term& term : polynomial.terms()) {
        factors += term.monomial.degree;
        bits += term.coefficient.bits();
    }
    return factors <= maximumFactors && bits <= maximumBits;
}

} // namespace

bool hold(const Fraction& fraction) {
    return holds(fraction.numerator) && holds(fraction.denominator);
}

bool mayMultiply(const Polynomial& a, const Polynomial& b) {
    if (a.isZero() || b.isZero()) {
        return true;
    }
    const std::size_t degree =
        std::size_t(a.terms().front().monomial.degree) + b.terms().front().monomial.degree;
    if (degree > maximumFactors) {
        return false;
    }
    std::size_t count = a.terms().size() * b.terms().size();
    if (count > maximumTerms) {
        count = countMonomials(a, b);
        const bool canCancel = !haveOneSign(a) || !haveOneSign(b);
        if (count > maximumTerms &&
            (!canCancel || count > maximumMonomials || count * countNames(a, b) > maximumPowers)) {
            return false;
        }
    }
    return count * degree <= maximumFactorsOnTheWay &&
           count * (bitsOfLargest(a) + bitsOfLargest(b)) <= maximumBits;
}

bool mayDivide(const Polynomial& a, const Polynomial& b) {
    // The time grows with a power of the degree for each name.
    constexpr std::size_t maximumDegree = 512;
    constexpr std::size_t maximumDegreeOfOne = std::size_t(1) << 18;
    const std::size_t degree =
        std::max(a.terms().front().monomial.degree, b.terms().front().monomial.degree);
    return degree <= maximumDegree || (degree <= maximumDegreeOfOne && countNames(a, b) == 1);
}

bool mayRaise(const Polynomial& base, std::uint32_t exponent) {
    if (base.isZero()) {
        return true;
    }
    const std::size_t degree = std::size_t(base.terms().front().monomial.degree) * exponent;
    // The ways to choose as many terms as the exponent says: from n of them C(n + e - 1, e).
    std::size_t count = 1;
    const std::size_t terms = base.terms().size();
    for (std::size_t i = 1; i < terms; ++i) {
        count = count * (exponent + i) / i;
        if (count > maximumMonomials) {
            return false;
        }
    }
    const std::size_t bits = bitsOfLargest(base) + static_cast<std::size_t>(std::bit_width(terms));
    return degree <= maximumFactorsOnTheWay / count && bits <= maximumBits / count / exponent;
}

} // namespace TV::bounds
