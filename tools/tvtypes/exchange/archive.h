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

/// The bytes that may still be read from several streams.
struct Allowance {
    std::uint64_t left = 0;
    const char* excess; ///< sentence of the error beyond it
};

/// Returns the stream, which takes its bytes from an allowance and throws a files::ReadError beyond
/// it. \param allowance must outlive the stream
Source counted(Source source, Allowance& allowance);

/// Reads a stream into memory, as a file that can be positioned.
std::shared_ptr<std::FILE> readIntoMemory(const Source& source);

} // namespace tvtool::exchange
