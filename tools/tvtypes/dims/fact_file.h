/// \file
/// Files of facts and questions.
#pragma once

#include "dims/fact_records.h"

#include <istream>
#include <string>

namespace tvtool::dims {

/// States the facts of a file in their order and answers its questions as they come. A line that is
/// neither is a fault, and the next one is read; reading ends after some twenty of them, and where
/// searches begin to take too long. Throws a files::ReadError if the file is no text or a line is
/// longer than any that can be read.
FactReport readFacts(std::istream& is);

/// The same for the file with this name. Throws a files::ReadError, also if it cannot be opened.
FactReport readFactFile(const std::string& path);

} // namespace tvtool::dims
