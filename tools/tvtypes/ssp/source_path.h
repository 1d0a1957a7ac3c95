/// \file
/// Sources of files, which are relative URIs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvtool::ssp {

/// A relative URI, resolved.
struct SourcePath {
    std::string path;     ///< relative to the folder of the system; begins with ../ above it
    std::string fragment; ///< behind #; empty if there is none
};

/// Returns whether a source is an absolute path or has a scheme.
bool isAbsolute(std::string_view source);

/// Resolves a source against a folder, without . and .. in the middle, and with percent-encoded
/// characters decoded. \param folder relative to that of the system, with a slash at its end; empty
/// for the folder of the system itself
SourcePath resolveSource(std::string_view folder, std::string_view source);

/// Returns the path of a file in a folder, which is empty for that of the system itself.
std::string pathIn(const std::string& folder, std::string_view name);

/// Returns the folder of a path, with a slash at its end.
std::string folderOf(std::string_view path);

} // namespace tvtool::ssp
