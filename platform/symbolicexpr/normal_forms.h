/// \file
/// What is known of simplified expressions.
#pragma once

#include "fraction.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <memory>

namespace TV {

/// Remembers what has been simplified, so that an expression made of simplified ones does not have
/// to be computed from its names.
class NormalForms {
  public:
    struct Entry {
        std::uint32_t simplified;
        /// Whether it, or each of its parts, has a canonical form; otherwise it stays as it is.
        bool isCanonical;
        /// What a canonical form means. Null for others, and for lists and relations.
        std::unique_ptr<const Fraction> fraction;
    };

    /// Null if the expression has not been simplified.
    const Entry* find(std::uint32_t id) const {
        const auto found = entries_.find(id);
        return found == entries_.end() ? nullptr : &found->second;
    }

    void add(std::uint32_t id, std::uint32_t simplified, bool isCanonical) {
        entries_.try_emplace(id, Entry{simplified, isCanonical, nullptr});
    }
    const Entry& addCanonical(std::uint32_t id, Fraction fraction) {
        const auto [place, isNew] = entries_.insert_or_assign(
            id, Entry{id, true, std::make_unique<const Fraction>(std::move(fraction))});
        return place->second;
    }

  private:
    boost::unordered_flat_map<std::uint32_t, Entry> entries_;
};

} // namespace TV
