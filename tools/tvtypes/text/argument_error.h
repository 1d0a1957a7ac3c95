/// \file
/// Errors of the arguments of a call.
#pragma once

#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tvtool::text {

/// An argument of the call is invalid. what() is a sentence for the user.
class ArgumentError : public std::invalid_argument {
  public:
    explicit ArgumentError(const std::string& sentence, std::string invalidArgument = {},
                           std::string meant = {})
        : std::invalid_argument(sentence),
          argument(std::move(invalidArgument)),
          suggestion(std::move(meant)) {}

    std::string argument;   ///< as given; empty if the error is that of several arguments
    std::string suggestion; ///< what is meant instead; empty if there is none
};

/// Returns "; did you mean "unit"?"; empty without a suggestion.
std::string meantText(std::string_view suggestion);

/// Returns the error of an option whose argument is none of the few words that it takes. The
/// sentence lists them, and has a suggestion if one of them is near.
///
/// \param list  what the sentence says of the words: "a or b"
/// \param meant what is meant, if that is known; else the nearest of the words is suggested
ArgumentError choiceError(std::string_view option, std::string_view argument, std::string_view list,
                          const std::set<std::string>& words, std::string_view meant = {});

} // namespace tvtool::text
