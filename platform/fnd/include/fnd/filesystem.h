/// \file
/// Where the product is installed.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

namespace fnd::filesystem {

/// The root below which the product's files lie. By default that is `share/tvtypes` below the
/// prefix of this very library, whose folder is `lib` there, or one or two further down: the first
/// of the three parents of its folder that has such a folder, and the nearest if none has. It is ""
/// if the library's path is not UTF-8.
///
/// May be called by any thread.
TV_PLATFORM_API fnd::ustring get_install_path();

/// Sets another root, for the whole process; it need not exist. "" brings the default back.
TV_PLATFORM_API void set_install_path(const fnd::ustring& path);

} // namespace fnd::filesystem
