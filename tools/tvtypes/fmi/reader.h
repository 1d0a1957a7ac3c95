/// \file
/// Reads a model description.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "fmi/source.h"

#include <memory>

namespace tvtool::fmi {

/// Reads all that `source` holds. What is wrong with single elements is said in `remarks`, and the
/// reading goes on. Throws a files::ReadError if it is no description in FMI 2 or 3.
std::unique_ptr<Description> readDescription(Source& source, Remarks& remarks);

} // namespace tvtool::fmi
