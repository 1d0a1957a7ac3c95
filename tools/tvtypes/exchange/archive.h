/// \file
/// Entries of zip archives.
#pragma once

#include "exchange/source.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

struct zip;

namespace tvtool::exchange {

/// The longest directory of an archive that is read, in bytes.
inline constexpr std::uint64_t longestDirectory = std::uint64_t{32} << 20;

/// Opens an entry as a stream of at most `maxSize` unpacked bytes, whatever size the archive
/// states. Throws a files::ReadError, as does the stream. \param name of the entry, for errors
Source openEntry(const std::shared_ptr<zip>& archive, std::uint64_t index, std::string_view name,
                 std::uint64_t maxSize = largestDescription);

/// Returns the index of the entry with this name.
std::optional<std::uint64_t> findEntry(zip& archive, std::string_view name);

/// Reads a stream into memory, as a file that can be positioned. Takes at most `maxSize` bytes from
/// the total that is left, and throws a files::ReadError beyond it.
std::shared_ptr<std::FILE> readIntoMemory(const Source& source, std::uint64_t& left);

} // namespace tvtool::exchange
