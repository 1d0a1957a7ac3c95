#include "algebra/limits.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <bit>
#include <cassert>
#include <vector>

namespace TV::limits {
namespace {

/// Powers of a product's monomials: one number for each name in each monomial.
constexpr std::size_t maximumPowers = std::size_t(1) << 24;
/// Factors of an intermediate result, if all its terms were of the highest degree.
constexpr std::size_t maximumIntermediateFactors = maximumFactors * 4;

std::size_t largestCoefficientBits(const Polynomial& polynomial) {
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

/// Additive hash: the hash of a product of monomials is the sum of their hashes.
std::uint64_t hashMonomial(const Monomial& monomial) {
    std::uint64_t hash = 0;
    for (const Monomial::Factor& factor : monomial.factors) {
        std::uint64_t x = (factor.name + 1) * 0x9e3779b97f4a7c15ULL;
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
        x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
        hash += (x ^ (x >> 31)) * factor.power;
    }
    return hash;
}

std::vector<std::uint64_t> hashMonomials(const Polynomial& polynomial) {
    std::vector<std::uint64_t> hashes;
    hashes.reserve(polynomial.terms().size());
    for (const Term& term : polynomial.terms()) {
        hashes.push_back(hashMonomial(term.monomial));
    }
    return hashes;
}

/// Counts the distinct monomials of all products of two terms, up to maximumMonomials + 1. The set
/// of hashes uses open addressing.
std::size_t countMonomials(const Polynomial& a, const Polynomial& b) {
    constexpr std::size_t size = maximumMonomials * 2;
    constexpr std::uint64_t none = 0;
    std::vector<std::uint64_t> seen(size, none);
    const std::vector<std::uint64_t> left = hashMonomials(a);
    const std::vector<std::uint64_t> right = hashMonomials(b);
    std::size_t count = 0;
    for (const std::uint64_t x : left) {
        for (const std::uint64_t y : right) {
            const std::uint64_t hash = std::max<std::uint64_t>(x + y, 1);
            std::size_t slot = (hash >> 40) % size;
            while (seen[slot] != none && seen[slot] != hash) {
                slot = (slot + 1) % size;
            }
            if (seen[slot] == none) {
                seen[slot] = hash;
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

bool admitsPolynomial(const Polynomial& polynomial) {
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

bool admits(const Fraction& fraction) {
    return admitsPolynomial(fraction.numerator) && admitsPolynomial(fraction.denominator);
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
    return count * degree <= maximumIntermediateFactors &&
           count * (largestCoefficientBits(a) + largestCoefficientBits(b)) <= maximumBits;
}

bool mayDivide(const Polynomial& a, const Polynomial& b) {
    assert(!a.isZero() && !b.isZero());
    // The time is exponential in the number of names, with the degree as the base.
    constexpr std::size_t maximumDegree = 512;
    constexpr std::size_t maximumUnivariateDegree = std::size_t(1) << 18;
    const std::size_t degree =
        std::max(a.terms().front().monomial.degree, b.terms().front().monomial.degree);
    return degree <= maximumDegree || (degree <= maximumUnivariateDegree && countNames(a, b) == 1);
}

std::size_t termsOfPower(std::size_t terms, std::uint32_t exponent) {
    // The multisets of size e of n terms, C(n + e - 1, e).
    std::size_t count = 1;
    for (std::size_t i = 1; i < terms && count <= maximumMonomials; ++i) {
        count = count * (exponent + i) / i;
    }
    return count;
}

bool mayRaise(const Polynomial& base, std::uint32_t exponent) {
    assert(exponent >= 1);
    if (base.isZero()) {
        return true;
    }
    const std::size_t degree = std::size_t(base.terms().front().monomial.degree) * exponent;
    const std::size_t terms = base.terms().size();
    const std::size_t count = termsOfPower(terms, exponent);
    if (count > maximumMonomials) {
        return false;
    }
    const std::size_t bits =
        largestCoefficientBits(base) + static_cast<std::size_t>(std::bit_width(terms));
    return degree <= maximumIntermediateFactors / count && bits <= maximumBits / count / exponent;
}

} // namespace TV::limits
