/// \file
/// A model description as a stream of bytes, from a plain file or an archive.
#pragma once

#include "exchange/source.h"
#include "findings/findings.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct zip;

namespace tvtool::fmi {

/// Opens a description or the archive that contains one, which the first bytes decide and not the
/// name. `-` is standard input. Throws a files::ReadError.
exchange::Source openSource(const std::string& path, findings::Findings& findings);

/// Opens the description in an archive. `maxSize` limits the unpacked bytes.
exchange::Source openArchive(const std::shared_ptr<zip>& archive, findings::Findings& findings,
                             std::uint64_t maxSize = exchange::largestDescription);

/// Same for an archive in a file that can be positioned.
exchange::Source openArchive(std::shared_ptr<std::FILE> file, findings::Findings& findings,
                             std::uint64_t maxSize = exchange::largestDescription);

} // namespace tvtool::fmi
