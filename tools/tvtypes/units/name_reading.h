/// \file
/// Meaning of a single name in a unit as people write it.
#pragma once

#include "units/joined.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

struct NameReading {
    std::vector<UnitPower> product; ///< empty if the name is not known
    std::string reason;             ///< of a reading that is not the name of one unit, else empty
};

/// Error of a name that is not read; what() is the reason.
class RefusedName : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Returns the product of units that a name means: a unit of the database; one with digits for its
/// power, as m2; a convention; or symbols side by side. A power that is written after the name
/// applies to the last unit alone, so a name with one is split if it can be: Nm^2 is N*m^2.
/// Throws a RefusedName.
NameReading readName(std::string_view name, std::int32_t powerAfter);

/// Returns a remark about a unit of the database whose name mostly means something else, such as
/// PA, the petaampere; else an empty text.
std::string remarkOnName(std::string_view name);

} // namespace tvtool::units
