/// \file
/// What keeps a type from being shown.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tvtool::fixpt {

/// The call is of no use; the text is a sentence to show as it stands.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A text is no name of a type. What it says is a sentence to show as it stands.
class NameError : public Error {
  public:
    NameError(const std::string& sentence, std::string name, std::size_t at)
        : Error(sentence), text(std::move(name)), position(at) {}

    std::string text;
    std::size_t position; ///< of the byte at which it leaves what a name is
};

} // namespace tvtool::fixpt
