/// \file
/// The units of one kind.
#pragma once

#include "units/completion_words.h"
#include "units/unit_base_instance_mapping.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace TVTypeSys {

/// Owns copies of units, no two of which compare as equal.
class UnitDatabase::UnitRepository {
  public:
    /// Takes a unit over, which no flag of lost digits survives. Warns, and adds nothing, if an
    /// equal unit is there.
    void addUnit(std::unique_ptr<UnitBase> unit);

    /// Makes room for units yet to come.
    void reserve(std::size_t count);

    std::size_t size() const { return units_.size(); }

    UnitMatch match(std::u16string_view text) const { return mapping_.match(text); }

    /// The units of which the text is the name, the symbol or an alias.
    UnitBase::ReferenceSet matches(const std::u16string& text) const;

    UnitBase::ReferenceSet all() const;

    /// Appends words that begin with the prefix. Anything that is no SearchBy finds nothing.
    void complete(SearchBy by, const std::u16string& prefix,
                  std::vector<std::u16string>& out) const;

    /// Adds the units that have such a word.
    void appendCompleted(SearchBy by, UnitBase::ReferenceSet& out,
                         const std::u16string& prefix) const;

    /// Forgets all units, but none of the words.
    void clearAll();

  private:
    /// Whether a unit is there that compares as equal, neither coming before the other.
    bool hasEqual(const UnitBase& unit) const;

    void appendConstUnitBaseRefsSearched(SearchBy by, UnitBase::ReferenceSet& out,
                                         const std::u16string& text) const;

    UnitBaseInstanceMapping mapping_;
    std::vector<std::unique_ptr<UnitBase>> units_;
    /// The first unit of a name and a symbol, and those that differ from such a one in expression.
    boost::unordered_flat_map<std::pair<std::u16string_view, std::u16string_view>, const UnitBase*>
        firstOf_;
    std::set<const UnitBase*, UnitBase::UnitsComparator> further_;
    std::array<CompletionWords, 3> words_; ///< by SearchBy
};

} // namespace TVTypeSys
