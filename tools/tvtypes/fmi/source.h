/// \file
/// A model description as a stream of bytes, out of a plain file or an archive.
#pragma once

#include "files/read_error.h"
#include "fmi/remarks.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tvtool::fmi {

class Source {
  public:
    virtual ~Source() = default;
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// Fills `buffer` from its beginning and gives the number of bytes; 0 means that all is read.
    /// Throws a files::ReadError.
    virtual std::size_t read(std::span<char> buffer) = 0;
};

/// The most bytes that a description may unpack to.
inline constexpr std::uint64_t maxUnpackedSize = std::uint64_t{256} << 20;

/// Opens a description, or the archive that holds one. What it is shows in its first bytes, not in
/// its name. Throws a files::ReadError.
std::unique_ptr<Source> openSource(const std::string& path, Remarks& remarks);

/// Opens the description in an archive. `maxSize` is maxUnpackedSize but in tests.
std::unique_ptr<Source> openArchive(const std::string& path, Remarks& remarks,
                                    std::uint64_t maxSize = maxUnpackedSize);

} // namespace tvtool::fmi
