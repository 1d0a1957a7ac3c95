/// \file
/// The checks of checkDescription(), one for each aspect. Declared types are already resolved.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"

namespace tvtool::fmi {

/// Checks causality, variability and initial, their combinations, and whether a start value is
/// required or forbidden.
void checkCausalities(const Description& description, findings::Findings& findings);

/// Compares start values, limits and nominal values. Integers are compared exactly.
void checkLimits(const Description& description, findings::Findings& findings);

/// Checks that references between variables name suitable variables, and structural parameters.
void checkReferences(const Description& description, findings::Findings& findings);

/// Checks units and display units. Adds the units that are used without a definition, and sets
/// Variable::unit.
void resolveUnits(Description& description, findings::Findings& findings);

} // namespace tvtool::fmi
