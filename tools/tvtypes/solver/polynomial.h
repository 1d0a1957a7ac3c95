/// \file
/// Polynomials with exact coefficients.
#pragma once

#include "exact/number.h"

#include <cstdint>
#include <map>
#include <vector>

namespace tvtool::solver {

using exact::Number;

/// A size without a known value, by a number of the caller's choice.
using Unknown = std::uint32_t;

/// A product of unknowns in ascending order, each as often as its power; empty for the constant 1.
using Monomial = std::vector<Unknown>;

Monomial operator*(const Monomial& a, const Monomial& b);

/// A sum of monomials with coefficients that are not 0.
class Polynomial {
  public:
    Polynomial() = default;
    explicit Polynomial(const Number& constant) { add(Monomial{}, constant); }
    explicit Polynomial(const Monomial& monomial) { add(monomial, 1); }

    void add(const Monomial& monomial, const Number& coefficient);
    void add(const Polynomial& other, const Number& factor);

    const std::map<Monomial, Number>& terms() const { return terms_; }
    bool isConstant() const;
    /// Returns the coefficient of the monomial 1.
    Number constant() const;

    Polynomial operator-() const;
    friend Polynomial operator*(const Polynomial& a, const Polynomial& b);
    friend bool operator==(const Polynomial&, const Polynomial&) = default;

  private:
    std::map<Monomial, Number> terms_;
};

/// Returns a multiple by a positive number whose coefficients are whole numbers without a common
/// divisor. Zero is returned as it is.
Polynomial primitive(const Polynomial& polynomial);

} // namespace tvtool::solver
