/// \file
/// Output file of the expander: the unit database.
#pragma once

#include "catalogue.h"

#include <string>

namespace tvdata {

/// Returns the text of the file: one JSON object with three variables, one line for each record.
std::string databaseText(const Catalogue& catalogue);

} // namespace tvdata
