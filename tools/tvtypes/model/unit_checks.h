/// \file
/// Whether units mean what their names say.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "units/expansion.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tvtool::model {

/// What the name of a unit says.
struct NamedMeaning {
    std::optional<units::Expansion> meaning; ///< empty if the name is not known
    bool isAsWritten = false;                ///< whether the library takes the name itself
    /// What the library takes for the name; empty if the name has a number, too, for which an
    /// expression has no room.
    std::string expression;
};

/// Reads the name as people write units.
NamedMeaning meaningOfName(std::string_view name);

/// The base units of a BaseUnit, which the database has but for the radian: that is 1 there.
std::map<std::string, std::int64_t> powersOf(const fmi::BaseUnit& base);

/// A BaseUnit in one line, with the radian: 0.1 * rad/s, K + 273.15.
std::string textOf(const fmi::BaseUnit& base);

/// Says where base units, factor and offset of a definition differ from what its name says, and
/// gives whether they agree. They do so if either says nothing. Numbers in descriptions are
/// rounded, so what differs by a millionth is the same.
bool checkUnit(const fmi::UnitDefinition& unit, const NamedMeaning& named, fmi::Remarks& remarks);

/// The same for the display units of a definition.
void checkDisplayUnits(const fmi::UnitDefinition& unit, const NamedMeaning& named,
                       fmi::Remarks& remarks);

} // namespace tvtool::model
