/// \file
/// Facts as polynomials.
#pragma once

#include "dims/fact_graph.h"
#include "solver/solver.h"

#include <tvtypes/symbolicdims.h>

#include <optional>
#include <unordered_map>
#include <vector>

namespace tvtool::dims {

/// A quotient of polynomials.
struct Quotient {
    solver::Polynomial numerator;
    solver::Polynomial denominator;
};

/// Converts sizes and facts, whatever they look like, to polynomials with whole coefficients
/// without a common divisor. Names are the unknowns.
class FactForms {
  public:
    explicit FactForms(const TVTypeSys::SymbolicDimsTable& table) : table_(table) {}

    /// Returns the difference of the sides, multiplied by the divisors that have names; by their
    /// squares for a greater-than unless their sign is that of numbers that are not negative.
    /// \param areNegative whether sizes may be negative
    solver::Constraint constraint(const Fact& fact, bool areNegative);

    /// Returns the quotient of a size by id. A size without a simplest form is an unknown of its
    /// own.
    const Quotient& quotient(int id);

    /// Returns the id of the divisor of a size; empty if it has none but numbers.
    std::optional<int> namedDivisor(int id);

  private:
    std::optional<solver::Polynomial> polynomial(unsigned long expression);
    std::optional<solver::Polynomial> product(unsigned long expression);
    solver::Unknown unknownOf(unsigned long expression);

    const TVTypeSys::SymbolicDimsTable& table_;
    std::unordered_map<int, Quotient> quotients_; ///< by id
    std::unordered_map<unsigned long, solver::Unknown> unknowns_;
};

} // namespace tvtool::dims
