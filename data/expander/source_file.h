/// \file
/// Source files of the unit database.
#pragma once

#include "catalogue.h"
#include "compound_factors.h"

#include <string>

namespace tvdata {

/// Adds the records of a file, in order. Throws Fault with the file and the record.
void readSourceFile(const std::string& path, Catalogue& catalogue, CompoundFactors& compounds);

} // namespace tvdata
