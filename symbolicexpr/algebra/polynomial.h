/// \file
/// Polynomials in names, with whole numbers as coefficients.
#pragma once

#include "algebra/integer.h"
#include "algebra/names.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace TV {

/// A product of names with powers, the names in byte order.
struct Monomial {
    struct Factor {
        std::uint32_t name; ///< the id of the name
        std::uint32_t power;
        bool operator==(const Factor&) const = default;
    };

    bool operator==(const Monomial& other) const {
        return degree == other.degree && factors == other.factors;
    }

    boost::container::small_vector<Factor, 4> factors;
    std::uint32_t degree = 0;
};

Monomial multiply(const Monomial& a, const Monomial& b, const Names& names);
/// The greatest that divides both.
Monomial greatestCommonDivisor(const Monomial& a, const Monomial& b, const Names& names);
/// By one that divides it.
Monomial divideExactly(const Monomial& dividend, const Monomial& divisor);

/// Whether the first stands ahead of the second in a sum: it has the higher degree, or its names
/// spelled out come first.
bool isAhead(const Monomial& a, const Monomial& b, const Names& names);

struct Term {
    Integer coefficient; ///< not 0
    Monomial monomial;
    /// The expression of the term without its sign, once there is one; 0 until then.
    std::uint32_t written = 0;
};

/// Terms in their order in a sum, each monomial once.
class Polynomial {
  public:
    using Terms = boost::container::small_vector<Term, 1>;

    Polynomial() = default; ///< zero
    Polynomial(Integer constant);
    explicit Polynomial(std::uint32_t name);
    /// Of terms that are in order.
    explicit Polynomial(Terms terms) : terms_(std::move(terms)) {}

    const Terms& terms() const { return terms_; }
    Terms& terms() { return terms_; }
    bool isZero() const { return terms_.empty(); }
    bool isConstant() const {
        return terms_.empty() || (terms_.size() == 1 && terms_.front().monomial.degree == 0);
    }
    bool isOne() const { return isConstant() && !isZero() && terms_.front().coefficient.isOne(); }
    bool isNegative() const { return !isZero() && terms_.front().coefficient.isNegative(); }
    /// Of a constant.
    Integer constant() const { return isZero() ? Integer() : terms_.front().coefficient; }

    bool operator==(const Polynomial& other) const;

    void negate();
    void multiplyBy(const Integer& factor);
    void divideExactlyBy(const Term& divisor);

  private:
    friend Polynomial add(Polynomial a, Polynomial b, const Names& names);

    Terms terms_;
};

Polynomial add(Polynomial a, Polynomial b, const Names& names);
Polynomial multiply(const Polynomial& a, const Term& b, const Names& names);

} // namespace TV
