/// \file
/// The definitions of the commands as plain records, from which manual pages and completions are
/// written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::usage {

/// What completions offer for an argument.
enum class Offer : std::uint8_t {
    Nothing,
    Choices,    ///< the words of the argument
    Files,      ///< files, those first that end with the words of the argument
    Units,      ///< units of the database, which the tool lists
    Quantities, ///< what units measure, the same
    Systems     ///< systems of units, the same
};

struct Argument {
    std::string name; ///< as the help shows it: "FILE"; empty for a flag
    Offer offer = Offer::Nothing;
    std::vector<std::string> words{};

    bool operator==(const Argument&) const = default;
};

/// An option, or a positional argument, which has no names but that of its argument.
struct Option {
    std::vector<std::string> names; ///< with their hyphens: "-h", "--help"
    Argument argument;
    std::string description;
    std::string group;       ///< heading in the help
    bool isRepeated = false; ///< whether it can be given, or takes arguments, several times
    bool isRequired = false;

    bool takesArgument() const { return !argument.name.empty(); }
};

struct Command {
    std::string name;
    std::string description;
    std::string footer; ///< paragraphs; lines that begin with a blank are kept as they are
    std::vector<Option> options;
    std::vector<Option> positionals;
};

struct Tool {
    Command call; ///< the name of the tool, whose only positional argument is a command
    std::vector<Command> commands;
};

/// Returns the word for an offer, by which the tool lists its candidates if it has them: "units".
const char* nameOf(Offer offer);

/// Returns the offer with this name; Offer::Nothing for any other text.
Offer offerNamed(std::string_view name);

/// Calls `use(option, name)` for each name of each option of a command.
template <class Use>
void forEachName(const Command& command, const Use& use) {
    for (const Option& option : command.options) {
        for (const std::string& name : option.names) {
            use(option, name);
        }
    }
}

} // namespace tvtool::usage
