/// \file
/// The archives that the components of a system are in, each of which is unpacked once.
#pragma once

#include "exchange/archive.h"
#include "ssp/store.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace tvtool::ssp {

/// A file by its store and its path there.
using FileKey = std::pair<const Store*, std::string>;

/// A file: the entries of an archive, or its text.
struct Opened {
    const Store* archive = nullptr; ///< null for a text
    std::unique_ptr<Store> owner;   ///< of the archive, unless it has been kept
    exchange::Source text;
};

class Archives {
  public:
    /// \param maxUnpacked limits the bytes of all entries. Archives in archives are unpacked into
    ///                    memory.
    explicit Archives(std::uint64_t maxUnpacked)
        : unpacked_{maxUnpacked, "the archives of the system unpack to too many bytes"} {}

    exchange::Allowance& unpacked() { return unpacked_; }

    /// Opens a file, unless it is an archive that has been kept. Throws a files::ReadError.
    Opened open(const FileKey& key);

    /// Keeps an opened archive for later calls.
    void keep(Opened& opened, const FileKey& key);

    /// Returns an archive, and keeps it. Throws a files::ReadError, also for another file, which is
    /// not opened again.
    const Store& get(const FileKey& key);

  private:
    exchange::Allowance unpacked_;
    std::map<FileKey, std::unique_ptr<Store>> kept_;
    std::map<FileKey, std::string> faults_; ///< empty for archives
};

} // namespace tvtool::ssp
