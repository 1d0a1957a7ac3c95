/// \file
/// Index of units by name, symbol and alias.
#pragma once

#include <tvtypes/export.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// \addtogroup units
/// @{

namespace TVTypeSys {

class UnitBase;
struct UnitMatch;

/// Finds units by their exact, case-sensitive texts. Several units may have the same text.
///
/// One hash table has the names, symbols and aliases, so that the most frequent query, all units of
/// a text in any role, is one search. Its keys are views of the texts of the units. Searches may
/// run in several threads while no unit is added.
class TVTYPES_API UnitBaseInstanceMapping {
  public:
    /// Adds a unit, which is not owned. Warns with TorvaneTypes::Unit messages: SymbolNotDefined
    /// for an empty name or alias, NameNotDefined for an empty symbol, SimilarInstanceThere (name,
    /// symbol) for an alias that an earlier unit has. Throws std::bad_alloc with nothing added.
    /// \pre The unit is not null, keeps its texts, and outlives this object or its clear().
    void addUnit(const UnitBase* unit);

    /// \name Search
    /// @{

    /// Appends the units of which the text is the name, the symbol or an alias, in the order in
    /// which they were added; a unit that has an alias twice is appended twice.
    void findUnitByName(std::vector<const UnitBase*>& out, const std::u16string& text) const;
    void findUnitBySymbol(std::vector<const UnitBase*>& out, const std::u16string& text) const;
    void findUnitByAlias(std::vector<const UnitBase*>& out, const std::u16string& text) const;
    /// @}

    /// Removes all units.
    void clear() noexcept;

    /// Reserves memory for the texts of further units.
    void reserve(std::size_t units);

  private:
    friend class UnitDatabase;

    static constexpr std::uint32_t none = UINT32_MAX;
    enum class Role : std::uint8_t { Name, Symbol, Alias };

    /// An entry of the linked list of units of one text.
    struct Entry {
        const UnitBase* unit;
        Role role;
        std::uint32_t next;
    };
    struct List {
        std::uint32_t first = none;
        std::uint32_t last = none;
        bool hasAlias = false; ///< whether the text is an alias of one of the units
    };

    /// Returns the units of which the text is the name, the symbol or an alias.
    TVTYPES_LOCAL UnitMatch match(std::u16string_view text) const;

    TVTYPES_LOCAL bool isAlias(std::u16string_view text) const;
    TVTYPES_LOCAL void makeRoom(std::size_t texts);
    TVTYPES_LOCAL void add(const UnitBase* unit, Role role, std::u16string_view text) noexcept;
    TVTYPES_LOCAL void find(std::vector<const UnitBase*>& out, Role role,
                            std::u16string_view text) const;
    template <class Visitor>
    TVTYPES_LOCAL void visit(std::u16string_view text, const Visitor& visitor) const;

    // The hash of the standard library takes a word at a time, Boost's a character.
    boost::unordered_flat_map<std::u16string_view, List, std::hash<std::u16string_view>> lists_;
    std::vector<Entry> entries_;
};

} // namespace TVTypeSys

/// @}
