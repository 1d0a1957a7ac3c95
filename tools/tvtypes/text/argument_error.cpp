#include "text/argument_error.h"

#include "text/quote.h"
#include "text/suggestion.h"

#include <fmt/format.h>

namespace tvtool::text {

std::string meantText(std::string_view suggestion) {
    return suggestion.empty() ? "" : fmt::format("; did you mean \"{}\"?", suggestion);
}

ArgumentError choiceError(std::string_view option, std::string_view argument, std::string_view list,
                          const std::set<std::string>& words, std::string_view meant) {
    const std::string suggestion =
        meant.empty() ? nearestChoice(argument, words).value_or("") : std::string(meant);
    return ArgumentError(fmt::format("{} cannot be {}, it is {}{}", option, quoted(argument), list,
                                     meantText(suggestion)),
                         std::string(argument), suggestion);
}

} // namespace tvtool::text
