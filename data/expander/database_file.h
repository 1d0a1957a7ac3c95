/// \file
/// Output file of the expander: the unit database.
#pragma once

#include "compound_factors.h"

#include <string>

namespace tvdata {

/// Returns the text of the file: one JSON object with four variables, one line for each record.
std::string databaseText(const Catalogue& catalogue, const CompoundFactors& compounds);

} // namespace tvdata
