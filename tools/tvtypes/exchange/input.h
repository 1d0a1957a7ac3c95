/// \file
/// Opening of files and standard input, which may be archives.
#pragma once

#include "exchange/source.h"

#include <cstdio>
#include <memory>
#include <string>

namespace tvtool::exchange {

/// An opened file: an archive by its first bytes, not by its name, or any other.
struct Input {
    std::shared_ptr<std::FILE> archive; ///< that can be positioned; null for another file
    Source source;                      ///< of another file; empty for an archive
};

/// Opens a file; `-` is standard input. Throws a files::ReadError, also for an empty file.
Input openInput(const std::string& path);

/// Same for the entry of an archive. One that is an archive itself is read into memory.
Input openInput(Source source);

} // namespace tvtool::exchange
