/// \file
/// Units of one kind: concrete or abstract.
#pragma once

#include "units/compound_factors.h"
#include "units/unit_lookup.h"

#include <tvtypes/units/trie.h>
#include <tvtypes/units/unit_base_instance_mapping.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace TVTypeSys {

/// Owns units, no two of which compare as equal, and finds them by text. Owns the factors that are
/// listed for their products.
class UnitDatabase::UnitRepository {
  public:
    /// Adds a unit and resets precision() of its numbers. If an equal unit is there, warns with
    /// UnitAlreadyInDatabase and adds nothing; nor is anything added if an exception is thrown.
    void addUnit(std::unique_ptr<UnitBase> unit);

    /// Reserves memory for further units.
    void reserve(std::size_t count);

    std::size_t size() const { return units_.size(); }

    /// Factors that are listed for products of these units.
    CompoundFactors& compoundFactors() { return compoundFactors_; }
    const CompoundFactors& compoundFactors() const { return compoundFactors_; }

    /// Returns the units of which the text is the name, the symbol or an alias.
    UnitMatch match(std::u16string_view text) const { return mapping_.match(text); }

    /// Returns the same as a set.
    UnitBase::ReferenceSet matches(const std::u16string& text) const;

    UnitBase::ReferenceSet all() const;

    /// Appends the words of a kind that begin with the prefix. Another value of `by` finds nothing.
    void complete(SearchBy by, const std::u16string& prefix,
                  std::vector<std::u16string>& out) const;

    /// Adds the units that have such words.
    void appendCompleted(SearchBy by, UnitBase::ReferenceSet& out,
                         const std::u16string& prefix) const;

    /// Enters the texts of all units in the tries. Most programs never complete a word, so this is
    /// done before the first completion and not while units are loaded. Locked, so that completions
    /// may run in several threads.
    void fillTries() const;

    /// Destroys all units and listed factors. Completion still finds their words. Changes nothing
    /// if fillTries() throws.
    void clearAll();

  private:
    /// Whether there is a unit that is neither less nor greater in the order of
    /// UnitBase::compare().
    bool hasEqual(const UnitBase& unit) const;

    /// Appends the units with a text of a kind.
    void find(SearchBy by, const std::u16string& text, std::vector<const UnitBase*>& out) const;

    UnitBaseInstanceMapping mapping_;
    std::vector<std::unique_ptr<UnitBase>> units_;
    using NameAndSymbol = std::pair<std::u16string_view, std::u16string_view>;
    /// The hash of the standard library takes a word at a time, Boost's a character.
    struct Hash {
        std::size_t operator()(const NameAndSymbol& key) const {
            const std::hash<std::u16string_view> hash;
            return 3 * hash(key.first) + hash(key.second);
        }
    };
    /// First unit with a name and a symbol; further_ has those that differ from it in expression.
    boost::unordered_flat_map<NameAndSymbol, const UnitBase*, Hash> firstByNameAndSymbol_;
    std::set<const UnitBase*, UnitBase::UnitsComparator> further_;
    CompoundFactors compoundFactors_;

    mutable std::mutex filling_;
    mutable std::array<Trie, 3> tries_; ///< by SearchBy
    mutable std::size_t filled_ = 0;    ///< number of units whose texts are in the tries
};

} // namespace TVTypeSys
