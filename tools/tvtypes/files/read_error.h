/// \file
/// The error of files that cannot be read.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tvtool::files {

/// A file could not be read. what() is a sentence for the user, without the file and the line.
class ReadError : public std::runtime_error {
  public:
    explicit ReadError(const std::string& sentence, std::uint64_t lineOfError = 0,
                       std::uint64_t columnOfError = 0)
        : std::runtime_error(sentence), line(lineOfError), column(columnOfError) {}

    std::uint64_t line; ///< from 1; 0 if the error has no line
    std::uint64_t column;
};

} // namespace tvtool::files
