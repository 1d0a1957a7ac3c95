/// \file
/// Reading of a system with all files that it refers to.
#pragma once

#include "ssp/records.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tvtool::ssp {

/// The bytes that all archives of a system may unpack to; archives in archives do so into memory.
inline constexpr std::uint64_t mostUnpacked = std::uint64_t{512} << 20;

/// Reads an .ssp archive, an .ssd file or a directory that contains SystemStructure.ssd, and the
/// files that it refers to. What cannot be read is a finding. Throws a files::ReadError if there is
/// no system description that can be read. \param maxUnpacked tests lower it
std::unique_ptr<Package> readPackage(const std::string& path,
                                     std::uint64_t maxUnpacked = mostUnpacked);

} // namespace tvtool::ssp
