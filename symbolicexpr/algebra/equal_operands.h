/// \file
/// Equal operands of expressions that exceed the limits.
#pragma once

#include "algebra/integer.h"
#include "algebra/normal_forms.h"
#include "algebra/residues.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace TV {

/// A nested sum, or nested products and quotients, as a tree. Its inner nodes are the operators
/// that are used once, its leaves all other operands. Equal leaves are combined, and cancel,
/// without being multiplied out: equal expressions have one id. The time is proportional to n log n
/// for n operators.
class OperandTree {
  public:
    OperandTree(std::uint32_t root, const SymbolicExprTable::Contents& contents);

    /// Returns the operands, each once.
    const std::vector<std::uint32_t>& leaves() const { return leaves_; }

    /// Returns the id of the expression without the operands that cancel; others stay where they
    /// are. An operand that was simplified in this way is replaced. Returns the id of the root if
    /// nothing changes. Divisors cancel that are known not to be zero. \pre The expression has a
    /// value.
    std::uint32_t combined(const SymbolicExprTable& table, const NormalForms& forms,
                           Residues& residues) const;

  private:
    /// A leaf, and whether it is subtracted or a divisor.
    using Occurrence = std::pair<std::uint32_t, bool>;
    /// What is left of an operand: nothing for 0 in a sum, and for 1 in a product.
    struct Part {
        std::optional<std::uint32_t> id;
        bool isNegative = false;
    };
    class SumLeaves;
    class ProductLeaves;

    bool isOpened(std::uint32_t id) const { return opened_.contains(id); }
    /// Returns the leaves at each place where they are, from left to right.
    std::vector<Occurrence> occurrences() const;
    template <class Leaves>
    Part rebuilt(Leaves& leaves, const SymbolicExprTable& table) const;
    Part joined(SymbolicOp op, Part left, Part right, const SymbolicExprTable& table) const;

    std::uint32_t root_;
    const SymbolicExprTable::Contents& contents_;
    bool isSum_;
    boost::unordered_flat_set<std::uint32_t> opened_;
    std::vector<std::uint32_t> leaves_;
};

} // namespace TV
