/// \file
/// The error of files that a command reads or writes.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tvtool::files {

/// A file cannot be used. what() is the file and a sentence for the user.
class FileError : public std::runtime_error {
  public:
    FileError(std::string path, std::string what)
        : std::runtime_error(path + ": " + what),
          file(std::move(path)),
          sentence(std::move(what)) {}

    std::string file;
    std::string sentence;
};

} // namespace tvtool::files
