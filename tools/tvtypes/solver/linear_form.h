/// \file
/// Sparse linear forms with exact coefficients.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tvtool::solver {

using exact::Integer;
using exact::Number;

/// A variable of linear forms: a monomial of sizes, or an auxiliary variable.
using Column = std::uint32_t;

/// A sum of columns with coefficients that are not 0, and a constant.
class LinearForm {
  public:
    struct Term {
        Column column;
        Number coefficient;
    };

    LinearForm() = default;
    explicit LinearForm(Number constant) : constant_(std::move(constant)) {}
    /// \param terms in ascending order of their columns
    LinearForm(std::vector<Term> terms, Number constant)
        : terms_(std::move(terms)), constant_(std::move(constant)) {}

    const std::vector<Term>& terms() const { return terms_; } ///< in ascending order of the columns
    const Number& constant() const { return constant_; }
    bool isConstant() const { return terms_.empty(); }

    /// Returns the term of a column; null if it has none.
    const Term* find(Column column) const;

    void addConstant(const Number& number) { constant_ += number; }
    void add(const LinearForm& other, const Number& factor);
    void scale(const Number& factor);

    /// Returns the steps that arithmetic with all coefficients takes, about.
    std::uint64_t weight() const;

    /// Replaces a column by a form. Returns false if the column has no term.
    bool substitute(Column column, const LinearForm& form);

    /// Returns the form for a column that has a term for which this form is 0.
    LinearForm solvedFor(Column column) const;

    /// Scales by a positive number, so that the coefficients are whole numbers without a common
    /// divisor. The constant may stay a fraction.
    void makePrimitive();

  private:
    std::vector<Term> terms_;
    Number constant_ = 0;
};

/// Returns the steps that a multiplication by a number takes, about.
std::uint64_t weightOf(const Number& number);

/// Returns the largest whole number that is not above a number.
Integer floorOf(const Number& number);

} // namespace tvtool::solver
