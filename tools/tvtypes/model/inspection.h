/// \file
/// The inspection of one model description.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "report/findings.h"

#include <string>

namespace tvtool::model {

/// Inspects the description in a file, or in the archive that holds one. Throws a fmi::ReadError.
report::Findings inspectFile(const std::string& path);

} // namespace tvtool::model
