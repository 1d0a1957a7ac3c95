/// \file
/// The unit database as the library reads it.
#pragma once

#include "catalogue.h"

#include <string>

namespace tvdata {

/// One JSON object with the three variables of the file, a record a line.
std::string databaseText(const Catalogue& catalogue);

} // namespace tvdata
