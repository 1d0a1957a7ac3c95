/// \file
/// A file of records.
#pragma once

#include "catalogue.h"

#include <string>

namespace tvdata {

/// Adds what the file holds, in its order, to \p catalogue. Throws a Fault that names the file and
/// the record.
void readSourceFile(const std::string& path, Catalogue& catalogue);

} // namespace tvdata
