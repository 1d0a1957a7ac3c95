/// \file
/// A model description as a stream of bytes, from a plain file or an archive.
#pragma once

#include "files/read_error.h"
#include "findings/findings.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace tvtool::fmi {

/// Reads the next bytes into the buffer and returns their number; 0 at the end. Throws a
/// files::ReadError.
using Source = std::function<std::size_t(std::span<char> buffer)>;

/// Opens a description or the archive that contains one, which the first bytes decide and not the
/// name. Throws a files::ReadError.
Source openSource(const std::string& path, findings::Findings& findings);

/// Opens the description in an archive. `maxSize` limits the unpacked bytes; tests lower it.
Source openArchive(const std::string& path, findings::Findings& findings,
                   std::uint64_t maxSize = std::uint64_t{256} << 20);

} // namespace tvtool::fmi
