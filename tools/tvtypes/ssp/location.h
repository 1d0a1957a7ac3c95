/// \file
/// Location of the file that a source names.
#pragma once

#include "ssp/archives.h"
#include "ssp/references.h"
#include "ssp/store.h"

#include <string>

namespace tvtool::ssp {

/// A file that a source names.
struct Located {
    const Store* store = nullptr; ///< null if there is none
    std::string path;
    std::string fragment;
};

/// Returns the file of a source, or one without a store after a finding. \param store that of the
/// system file at `path`, which the source is relative to
Located locate(const SourceReference& reference, const Store& store, const std::string& path,
               Archives& archives);

} // namespace tvtool::ssp
