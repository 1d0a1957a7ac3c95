/// \file
/// Search for model descriptions in directories.
#pragma once

#include <string>
#include <vector>

namespace tvtool::fmi {

/// A file to read, or a directory or file that cannot be read.
struct DescriptionFile {
    std::string path;
    std::string error; ///< a sentence; empty for a file to read
};

/// Returns the files that arguments name: files as they are, and those in directories at any depth,
/// in the order of their names. In a directory these are the regular files that end in .fmu, and
/// those that end in .xml and have the root element of a description. Each file and each directory
/// is visited once, so symbolic links may form loops.
std::vector<DescriptionFile> findDescriptionFiles(const std::vector<std::string>& arguments);

/// Returns whether the argument is a directory.
bool isDirectory(const std::string& argument);

} // namespace tvtool::fmi
