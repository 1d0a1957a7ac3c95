/// \file
/// Files of facts and questions.
///
/// A line `N > 2 # Gain1` states a fact for a block, `N > 2 ?` is a question. The relations are ==,
/// > and <. A line that begins with # is a comment.
#pragma once

#include "dims/fact_records.h"

#include <istream>
#include <string>

namespace tvtool::dims {

/// Registers the facts of a file and answers its questions in the order of the lines. An invalid
/// line is a fault; reading is given up after 20 faults. Throws a files::ReadError if the stream
/// cannot be read, or for a byte of value 0 or a line longer than 4 MiB.
FactReport readFacts(std::istream& is);

/// The same for the file with this name. Throws a files::ReadError also if it cannot be opened.
FactReport readFactFile(const std::string& path);

} // namespace tvtool::dims
