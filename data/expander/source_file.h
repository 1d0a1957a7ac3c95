/// \file
/// Source files of the unit database.
#pragma once

#include "catalogue.h"

#include <string>

namespace tvdata {

/// Adds the records of a file to a catalogue, in order. Throws Fault with the file and the record.
void readSourceFile(const std::string& path, Catalogue& catalogue);

} // namespace tvdata
