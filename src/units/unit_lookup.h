/// \file
/// Lookup of units by text.
#pragma once

#include <tvtypes/units/database.h>

#include <cstddef>
#include <optional>
#include <string_view>

namespace TVTypeSys {

/// The units of one kind of which a text is the name, the symbol or an alias.
struct UnitMatch {
    const UnitBase* first = nullptr; ///< the least of them in UnitBase::compare(), or null
    std::size_t count = 0;           ///< the number of distinct units
};

/// Looks up units without building the set that UnitDatabase::getUnit returns. One search of a hash
/// table, plus a comparison for each further unit with this text.
class UnitLookup {
  public:
    static UnitMatch concrete(const UnitDatabase& database, std::u16string_view text);
    static UnitMatch abstract(const UnitDatabase& database, std::u16string_view text);

    /// Returns the factor that the database lists for a product of units whose exact value is
    /// value * 10^exponent.
    static std::optional<Rational> compoundFactor(const UnitDatabase& database, double value,
                                                  double exponent);

    /// Returns a number that changes when units of the database of the process are cleared or
    /// another one replaces it: then a text may not denote a unit any more, or the file has to be
    /// loaded again. Never 0.
    static unsigned generation();
};

} // namespace TVTypeSys
