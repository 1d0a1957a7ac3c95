/// \file
/// Root of the installation.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

namespace fnd::filesystem {

/// Returns the root of the product's files. The default is `share/tvtypes` below the prefix of this
/// library, whose folder is `lib`, or one or two levels below `lib`: the first of the three parents
/// of the folder that has `share/tvtypes`, else the nearest. "" if the path of the library is not
/// UTF-8. Thread-safe.
TV_PLATFORM_API fnd::ustring get_install_path();

/// Sets the root for the process. The folder need not exist; "" restores the default. Thread-safe.
TV_PLATFORM_API void set_install_path(const fnd::ustring& path);

} // namespace fnd::filesystem
