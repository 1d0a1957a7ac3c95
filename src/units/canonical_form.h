/// \file
/// Canonical forms of units.
#pragma once

#include <tvtypes/units/unit.h>

namespace TVTypeSys {

/// Adds a power of another unit to the canonical form of a unit. The other unit is expanded to its
/// own canonical form unless it has an offset: then it is a term itself.
void addToCanonicalForm(UnitBase& unit, UnitBase::Reference term, int power);

} // namespace TVTypeSys
