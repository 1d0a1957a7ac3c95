/// \file
/// A model description as a stream of bytes, from a plain file or an archive.
#pragma once

#include "files/read_error.h"
#include "findings/findings.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace tvtool::fmi {

/// Reads the next bytes into the buffer and returns their number; 0 at the end. Throws a
/// files::ReadError.
using Source = std::function<std::size_t(std::span<char> buffer)>;

/// The largest description that is read, in bytes.
inline constexpr std::uint64_t largestDescription = std::uint64_t{256} << 20;

/// Opens a description or the archive that contains one, which the first bytes decide and not the
/// name. `-` is standard input. Throws a files::ReadError.
Source openSource(const std::string& path, findings::Findings& findings);

/// Opens the description in an archive in a file that can be positioned. `maxSize` limits the
/// unpacked bytes; tests lower it.
Source openArchive(std::shared_ptr<std::FILE> file, findings::Findings& findings,
                   std::uint64_t maxSize = largestDescription);

} // namespace tvtool::fmi
