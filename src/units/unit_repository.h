/// \file
/// The units of one kind.
#pragma once

#include "units/completion_words.h"
#include "units/unit_base_instance_mapping.h"

#include <array>
#include <map>
#include <memory>

namespace TVTypeSys {

/// Owns copies of units, no two of which compare as equal.
class UnitDatabase::UnitRepository {
  public:
    /// Takes a unit over, which no flag of lost digits survives. Warns, and adds nothing, if an
    /// equal unit is there.
    void addUnit(std::unique_ptr<UnitBase> unit);

    /// Makes room for units yet to come.
    void reserve(std::size_t count) { mapping_.reserve(count); }

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
    void appendConstUnitBaseRefsSearched(SearchBy by, UnitBase::ReferenceSet& out,
                                         const std::u16string& text) const;

    UnitBaseInstanceMapping mapping_;
    std::map<const UnitBase*, std::unique_ptr<UnitBase>, UnitBase::UnitsComparator> units_;
    std::array<CompletionWords, 3> words_; ///< by SearchBy
};

} // namespace TVTypeSys
