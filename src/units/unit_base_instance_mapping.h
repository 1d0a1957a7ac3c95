/// \file
/// Units found by name, symbol and alias.
#pragma once

#include "units/unit_lookup.h"

#include <tvtypes/units/database.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// One table for all three, so that the common question, what a text means at all, is one search.
/// The texts lie in the units.
class UnitBaseInstanceMapping {
  public:
    /// Keeps the address of the unit, whose texts must not change. Warns as told at UnitDatabase.
    void addUnit(const UnitBase* unit);

    /// Appends the units that have the text as a name, a symbol or an alias, in the order in which
    /// they were added.
    void find(std::vector<const UnitBase*>& out, UnitDatabase::SearchBy by,
              std::u16string_view text) const;

    /// What the text means, be it name, symbol or alias.
    UnitMatch match(std::u16string_view text) const;

    void clear();

    /// Makes room for the texts of as many further units.
    void reserve(std::size_t units);

  private:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// A unit under a text. Those under one text make a list.
    struct Entry {
        const UnitBase* unit;
        UnitDatabase::SearchBy by;
        std::uint32_t next;
    };
    struct List {
        std::uint32_t first = none;
        std::uint32_t last = none;
        std::uint32_t roles = 0; ///< a bit for each SearchBy that an entry has
    };

    static std::uint32_t bitOf(UnitDatabase::SearchBy by) { return 1U << by; }
    bool has(UnitDatabase::SearchBy by, std::u16string_view text) const;
    void add(const UnitBase* unit, UnitDatabase::SearchBy by, std::u16string_view text);
    template <class Visitor>
    void visit(std::u16string_view text, const Visitor& visitor) const;

    boost::unordered_flat_map<std::u16string_view, List> lists_;
    std::vector<Entry> entries_;
};

} // namespace TVTypeSys
