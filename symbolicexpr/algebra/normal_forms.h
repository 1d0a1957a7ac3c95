/// \file
/// What is known of simplified expressions.
#pragma once

#include "algebra/fraction.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace TV {

/// Remembers what has been simplified, so that an expression made of simplified ones does not have
/// to be computed from its names.
class NormalForms {
  public:
    struct Entry {
        std::uint32_t simplified;
        /// Whether it, or each of its parts, has a canonical form; otherwise it stays as it is.
        bool isCanonical = false;
        /// Of a sum or product that stays as it is: whether it does although its parts have values.
        /// Then more parts can make a value of it.
        bool isTooLong = false;
        /// Of one that is too long, and known to be a polynomial: how many terms it has at least.
        std::size_t leastTerms = 0;
        /// What a canonical form means. Null for others, and for lists and relations.
        std::unique_ptr<const Fraction> fraction = nullptr;
    };

    /// Null if the expression has not been simplified.
    const Entry* find(std::uint32_t id) const {
        const auto found = entries_.find(id);
        return found == entries_.end() ? nullptr : &found->second;
    }

    void add(std::uint32_t id, Entry entry) { entries_.try_emplace(id, std::move(entry)); }
    void addCanonical(std::uint32_t id, Fraction fraction) {
        Entry entry{id, true};
        entry.fraction = std::make_unique<const Fraction>(std::move(fraction));
        entries_.insert_or_assign(id, std::move(entry));
    }

  private:
    boost::unordered_flat_map<std::uint32_t, Entry> entries_;
};

} // namespace TV
