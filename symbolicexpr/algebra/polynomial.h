/// \file
/// Polynomials in names, with integer coefficients.
#pragma once

#include "algebra/integer.h"
#include "algebra/name_order.h"

#include <boost/container/small_vector.hpp>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace TV {

/// A product of powers of names, the names in byte order, each once.
struct Monomial {
    struct Factor {
        std::uint32_t name; ///< id of the name
        std::uint32_t power;
        bool operator==(const Factor&) const = default;
    };

    bool operator==(const Monomial& other) const {
        return degree == other.degree && factors == other.factors;
    }

    boost::container::small_vector<Factor, 4> factors;
    std::uint32_t degree = 0; ///< sum of the powers
};

Monomial multiply(const Monomial& a, const Monomial& b, const NameOrder& order);
Monomial greatestCommonDivisor(const Monomial& a, const Monomial& b, const NameOrder& order);
/// \pre `divisor` divides `dividend`.
Monomial divideExactly(const Monomial& dividend, const Monomial& divisor);

/// Returns whether `a` comes before `b` in a sum (graded lexicographic order): it has the higher
/// degree, or at equal degree its names, powers written as repeated names, are lexicographically
/// less.
bool isBefore(const Monomial& a, const Monomial& b, const NameOrder& order);

struct Term {
    Integer coefficient; ///< not 0
    Monomial monomial;
    /// Id of the expression of this term without its sign; 0 until it is interned.
    std::uint32_t internedId = 0;
};

/// A sum of terms in graded lexicographic order, each monomial once. Zero has no terms.
class Polynomial {
  public:
    using Terms = boost::container::small_vector<Term, 1>;

    Polynomial() = default; ///< zero
    Polynomial(Integer constant);
    explicit Polynomial(std::uint32_t name);
    /// \pre The terms are in order.
    explicit Polynomial(Terms terms) : terms_(std::move(terms)) {}

    const Terms& terms() const { return terms_; }
    Terms& terms() { return terms_; }
    bool isZero() const { return terms_.empty(); }
    bool isConstant() const {
        return terms_.empty() || (terms_.size() == 1 && terms_.front().monomial.degree == 0);
    }
    bool isOne() const { return isConstant() && !isZero() && terms_.front().coefficient.isOne(); }
    bool isNegative() const { return !isZero() && terms_.front().coefficient.isNegative(); }
    /// \pre The polynomial is constant.
    Integer constant() const {
        assert(isConstant());
        return isZero() ? Integer() : terms_.front().coefficient;
    }

    void negate();
    void multiplyBy(const Integer& factor);
    /// \pre The divisor divides each term.
    void divideExactlyBy(const Term& divisor);

  private:
    friend Polynomial add(Polynomial a, Polynomial b, const NameOrder& order);

    Terms terms_;
};

Polynomial add(Polynomial a, Polynomial b, const NameOrder& order);
Polynomial multiply(const Polynomial& a, const Term& b, const NameOrder& order);

} // namespace TV
