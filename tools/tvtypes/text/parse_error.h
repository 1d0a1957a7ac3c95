/// \file
/// Error of texts that cannot be parsed.
#pragma once

#include "text/suggestion.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::text {

/// A text could not be parsed. what() is a sentence for the user, without the text and the
/// position, and with the suggestions.
class ParseError : public std::runtime_error {
  public:
    ParseError(const std::string& sentence, std::string parsedText, std::size_t byte,
               const std::vector<std::string>& suggestions = {})
        : std::runtime_error(sentence + suggestionText(suggestions)),
          text(std::move(parsedText)),
          position(byte),
          suggestion(suggestions.empty() ? "" : suggestions.front()) {}

    std::string text;
    std::size_t position;   ///< byte of `text` at which parsing failed
    std::string suggestion; ///< the first one; empty if there is none
};

} // namespace tvtool::text
