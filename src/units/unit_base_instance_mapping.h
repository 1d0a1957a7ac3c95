/// \file
/// Hash index of units by name, symbol and alias.
#pragma once

#include "units/unit_lookup.h"

#include <tvtypes/units/database.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// One hash table for names, symbols and aliases, so that the most frequent query, all units of a
/// text in any role, is one search. The keys are views of the texts of the units.
class UnitBaseInstanceMapping {
  public:
    /// Adds a unit. \pre It keeps its address and texts. Warns as UnitDatabase::addUnit does.
    void addUnit(const UnitBase* unit);

    /// Appends the units of which the text is the name, the symbol or an alias, as `by` selects, in
    /// the order in which they were added.
    void find(std::vector<const UnitBase*>& out, UnitDatabase::SearchBy by,
              std::u16string_view text) const;

    /// Returns the units of which the text is the name, the symbol or an alias.
    UnitMatch match(std::u16string_view text) const;

    void clear();

    /// Reserves memory for the texts of further units.
    void reserve(std::size_t units);

  private:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// An entry of the linked list of units of one text.
    struct Entry {
        const UnitBase* unit;
        UnitDatabase::SearchBy by;
        std::uint32_t next;
    };
    struct List {
        std::uint32_t first = none;
        std::uint32_t last = none;
        std::uint32_t roles = 0; ///< bit set of the SearchBy values of the entries
    };

    static std::uint32_t roleBit(UnitDatabase::SearchBy by) { return 1U << by; }
    bool has(UnitDatabase::SearchBy by, std::u16string_view text) const;
    void add(const UnitBase* unit, UnitDatabase::SearchBy by, std::u16string_view text);
    template <class Visitor>
    void visit(std::u16string_view text, const Visitor& visitor) const;

    boost::unordered_flat_map<std::u16string_view, List> lists_;
    std::vector<Entry> entries_;
};

} // namespace TVTypeSys
