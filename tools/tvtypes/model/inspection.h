/// \file
/// The inspection of one model description.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "fmi/source.h"
#include "model/findings.h"

#include <string>

namespace tvtool::model {

/// Inspects a description, of which `remarks` says what has been noticed so far. Throws a
/// files::ReadError. The findings name no file.
model::Findings inspectSource(fmi::Source& source, fmi::Remarks remarks);

/// Inspects the description in a file, or in the archive that holds one. Throws a files::ReadError.
model::Findings inspectFile(const std::string& path);

} // namespace tvtool::model
