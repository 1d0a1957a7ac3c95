/// \file
/// Memo of simplification results.
#pragma once

#include "algebra/fraction.h"
#include "table/contents.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace TV {

/// Memoises the results of simplification by expression id, so that an expression whose operands
/// are simplified is not computed from its names again.
class NormalForms : public SymbolicExprTable::Contents::Memo {
  public:
    struct Entry {
        std::uint32_t simplified; ///< id of the result
        /// Whether the result is canonical: for a list or relation, whether each entry or side is.
        /// Other arithmetic is its own result.
        bool isCanonical = false;
        /// For a sum or product without a canonical form: whether its operands have values, and
        /// only the result exceeds the limits. Further operands can bring it within the limits.
        bool isTooLong = false;
        /// For one that is too long and known to be a polynomial: a lower bound of its terms, else
        /// 0.
        std::size_t leastTerms = 0;
        /// Value of a canonical form of arithmetic; null for all others.
        std::unique_ptr<const Fraction> fraction = nullptr;
        /// For arithmetic that evaluation gives no canonical form: whether equal operands were
        /// combined.
        bool isCombined = false;
    };

    /// Returns the memoised result; null if the expression has not been simplified.
    const Entry* find(std::uint32_t id) const {
        const auto found = entries_.find(id);
        return found == entries_.end() ? nullptr : &found->second;
    }

    /// Adds a result unless the expression has one.
    void add(std::uint32_t id, Entry entry) { entries_.try_emplace(id, std::move(entry)); }
    /// Adds or replaces the value of an expression that is a canonical form itself.
    void addCanonical(std::uint32_t id, Fraction fraction) {
        Entry entry{id, true};
        entry.fraction = std::make_unique<const Fraction>(std::move(fraction));
        entries_.insert_or_assign(id, std::move(entry));
    }

  private:
    boost::unordered_flat_map<std::uint32_t, Entry> entries_;
};

} // namespace TV
