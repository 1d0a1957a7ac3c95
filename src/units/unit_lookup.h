/// \file
/// Units by text, without a set made for the answer.
#pragma once

#include <tvtypes/units/database.h>

#include <cstddef>
#include <string_view>

namespace TVTypeSys {

/// What a text means among the units of one kind.
struct UnitMatch {
    const UnitBase* first = nullptr; ///< the least of them, or null
    std::size_t count = 0;
};

class UnitLookup {
  public:
    static UnitMatch concrete(const UnitDatabase& database, std::u16string_view text);
    static UnitMatch abstract(const UnitDatabase& database, std::u16string_view text);

    /// Changes whenever a text that meant a unit may have ceased to, or the file is to be read
    /// again. Never 0.
    static unsigned generation();
};

} // namespace TVTypeSys
