#include "commands/argument_type.h"

#include <sstream>

namespace tvtool {

std::string typeText(const usage::Argument& argument) {
    return argument.offer == usage::Offer::Nothing
               ? argument.name
               : fmt::format("{}:{} {}", argument.name, nameOf(argument.offer),
                             fmt::join(argument.words, " "));
}

usage::Argument argumentOf(const CLI::Option& option) {
    usage::Argument argument;
    if (option.get_items_expected_max() == 0) {
        return argument;
    }
    std::istringstream text(option.get_type_name());
    std::getline(text, argument.name, ':');
    if (option.get_positional()) {
        argument.name = option.get_single_name();
    }
    std::string offer;
    text >> offer;
    argument.offer = usage::offerNamed(offer);
    for (std::string word; text >> word;) {
        argument.words.push_back(word);
    }
    return argument;
}

} // namespace tvtool
