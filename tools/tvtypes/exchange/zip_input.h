/// \file
/// Input of the zip library.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

struct zip;
struct zip_error;

namespace tvtool::exchange {

/// Opens an archive in a file that can be positioned. The library keeps all entries of the
/// directory in memory, so it may read only `maxDirectory` bytes to open the archive. Throws a
/// files::ReadError.
std::shared_ptr<zip> openZip(std::shared_ptr<std::FILE> file, std::uint64_t maxDirectory);

/// Throws std::bad_alloc if that is the error.
void throwIfOutOfMemory(const zip_error& error);

} // namespace tvtool::exchange
