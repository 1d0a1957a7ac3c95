/// \file
/// Output files of the expander.
#pragma once

#include "compound_factors.h"

#include <string>

namespace tvdata {

/// Returns the text of the unit database: one JSON object with four variables, one line for each
/// record.
std::string databaseText(const Catalogue& catalogue, const CompoundFactors& compounds);

/// Returns the text of the file of what only the tool needs, in the same form: the number of units
/// of the database, the common units of quantities, and the definitions of units whose scaling is
/// not exactly their factor.
std::string definitionsText(const Catalogue& catalogue);

} // namespace tvdata
