/// \file
/// The files of a system in a folder or in an archive.
#pragma once

#include "exchange/archive.h"
#include "exchange/input.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct zip;

namespace tvtool::ssp {

/// Paths are relative to the folder of the system, or to the root of the archive.
class Store {
  public:
    /// The files below a folder, and above it.
    explicit Store(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// The entries of an archive. \param name that findings show before the names of entries
    /// \param allowance the bytes that entries may still unpack to; must outlive the store
    Store(std::shared_ptr<std::FILE> archive, std::string name, exchange::Allowance& allowance);

    bool isArchive() const { return archive_ != nullptr; }
    /// Returns the archive; null for a folder.
    const std::shared_ptr<zip>& archive() const { return archive_; }

    /// Returns the path of a file as findings show it.
    std::string shownPath(std::string_view path) const;

    /// Returns whether there is such a file: a regular one, as others may have no end.
    bool hasFile(const std::string& path) const;

    /// Opens a file. Throws a files::ReadError.
    exchange::Input open(const std::string& path) const;

  private:
    std::filesystem::path folder_;
    std::shared_ptr<zip> archive_;
    std::string name_;
    exchange::Allowance* allowance_ = nullptr;
};

} // namespace tvtool::ssp
