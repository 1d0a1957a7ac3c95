/// \file
/// Values of expressions modulo a prime.
#pragma once

#include "table/contents.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <optional>

namespace TV {

/// Evaluates expressions at one point, modulo a prime. An expression with a value there divides by
/// nothing that is identically zero, and one with a value other than 0 is not identically zero
/// itself (Schwartz and Zippel). So no multiplication of polynomials is needed to show either; an
/// expression that is zero at the point alone is very rare.
class Residues {
  public:
    explicit Residues(const SymbolicExprTable::Contents& contents) : contents_(contents) {}

    /// Returns the value; empty where a divisor is zero at the point, and for lists and relations.
    /// Each subexpression is evaluated once.
    std::optional<std::uint64_t> valueOf(std::uint32_t root);

    bool isNonZero(std::uint32_t id) { return valueOf(id).value_or(0) != 0; }

  private:
    std::optional<std::uint64_t> compute(std::uint32_t id, const SymbolicExpr& expr) const;

    const SymbolicExprTable::Contents& contents_;
    boost::unordered_flat_map<std::uint32_t, std::optional<std::uint64_t>> values_;
};

} // namespace TV
