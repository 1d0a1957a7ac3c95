/// \file
/// What options and arguments take, for the help and for completions.
///
/// The command line library has a text for the type of an argument. Here it is the name in the help
/// and, behind a colon, what completions offer.
#pragma once

#include "text/argument_error.h"
#include "usage/definition.h"

#include <CLI/CLI.hpp>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tvtool {

/// Returns the type of an argument. Words have neither blanks nor colons.
std::string typeText(const usage::Argument& argument);

/// The type of files with these endings, of which there is none in `endings` if any file will do.
inline std::string fileType(const char* name, std::vector<std::string> endings = {}) {
    return typeText({name, usage::Offer::Files, std::move(endings)});
}

/// The type of an argument that is one of a few words, for which the help has a name.
inline std::string choiceType(const char* name, std::vector<std::string> words) {
    return typeText({name, usage::Offer::Choices, std::move(words)});
}

/// The same, where the help lists the words.
inline std::string choiceType(const std::vector<std::string>& words) {
    return choiceType(fmt::format("{}", fmt::join(words, "|")).c_str(), words);
}

/// The endings of descriptions of models.
inline const std::vector<std::string> modelEndings{".xml", ".fmu"};

/// Returns what the option takes, from its type; nothing for a flag.
usage::Argument argumentOf(const CLI::Option& option);

/// Adds an option that is one of a few words, each with a value.
template <class Value>
CLI::Option* addChoice(CLI::App& command, const char* option, Value& value, const char* help,
                       const char* name, std::vector<std::pair<std::string, Value>> choices) {
    std::vector<std::string> words;
    for (const auto& choice : choices) {
        words.push_back(choice.first);
    }
    const auto choose = [=, &value](const std::string& word) {
        const auto chosen =
            std::ranges::find(choices, word, [](const auto& each) { return each.first; });
        if (chosen == choices.end()) {
            throw text::choiceError(option, word, fmt::format("one of {}", fmt::join(words, ", ")),
                                    std::set<std::string>(words.begin(), words.end()));
        }
        value = chosen->second;
    };
    return command.add_option_function<std::string>(option, choose, help)
        ->type_name(choiceType(name, words));
}

} // namespace tvtool
