/// \file
/// Reading of a system with all files that it refers to.
#pragma once

#include "ssp/records.h"

#include <memory>
#include <string>

namespace tvtool::ssp {

/// Reads an .ssp archive, an .ssd file or a directory that contains SystemStructure.ssd, and the
/// files that it refers to. What cannot be read is a finding. Throws a files::ReadError if there is
/// no system description that can be read.
std::unique_ptr<Package> readPackage(const std::string& path);

} // namespace tvtool::ssp
