/// \file
/// Error of texts that cannot be parsed.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tvtool::text {

/// A text could not be parsed. what() is a sentence for the user, without the text and the
/// position.
class ParseError : public std::runtime_error {
  public:
    ParseError(const std::string& sentence, std::string parsedText, std::size_t byte)
        : std::runtime_error(sentence), text(std::move(parsedText)), position(byte) {}

    std::string text;
    std::size_t position; ///< byte of `text` at which parsing failed
};

} // namespace tvtool::text
