/// \file
/// A model description as a stream of bytes, out of a plain file or an archive.
#pragma once

#include "fmi/remarks.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace tvtool::fmi {

/// The description cannot be read. Line and column count from 1; 0 means that there is no place to
/// name.
class ReadError : public std::runtime_error {
  public:
    explicit ReadError(const std::string& sentence, std::uint64_t lineOfError = 0,
                       std::uint64_t columnOfError = 0)
        : std::runtime_error(sentence), line(lineOfError), column(columnOfError) {}

    std::uint64_t line;
    std::uint64_t column;
};

class Source {
  public:
    virtual ~Source() = default;
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// Fills `buffer` from its beginning and gives the number of bytes; 0 means that all is read.
    /// Throws a ReadError.
    virtual std::size_t read(std::span<char> buffer) = 0;
};

/// The most bytes that a description may unpack to.
inline constexpr std::uint64_t maxUnpackedSize = std::uint64_t{256} << 20;

/// Opens a description, or the archive that holds one. What it is shows in its first bytes, not in
/// its name. Throws a ReadError.
std::unique_ptr<Source> openSource(const std::string& path, Remarks& remarks);

/// Opens the description in an archive. `maxSize` is maxUnpackedSize but in tests.
std::unique_ptr<Source> openArchive(const std::string& path, Remarks& remarks,
                                    std::uint64_t maxSize = maxUnpackedSize);

} // namespace tvtool::fmi
