#include "usage/quoting.h"
#include "usage/scripts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvtool::usage {

namespace {

constexpr const char* beginning = R"zsh(#compdef tvtypes
# zsh completion of tvtypes, printed by: tvtypes completion zsh

# Adds what the tool lists.
_tvtypes_list() {
    local line word
    local -a candidates
    for line in ${(f)"$(${~tool} completion $1 "${(Q)PREFIX}" 2>/dev/null)"}; do
        word=${line%%$'\t'*}
        candidates+=(${word//:/\\:}${${line#$word}/$'\t'/:})
    done
    _describe -t $1 $1 candidates
}

_tvtypes() {
    local tool=$words[1] command=$words[2]
    local -a commands
    if ((CURRENT == 2)) && [[ $PREFIX != -* ]]; then
        commands=(
)zsh";

constexpr const char* middle = R"zsh(        )
        _describe -t commands command commands
        return
    fi
    if ((CURRENT == 2)); then
        command=tvtypes
    else
        shift words
        ((CURRENT--))
    fi
    case $command in
)zsh";

constexpr const char* ending = R"zsh(    esac
}

if [[ $funcstack[1] == _tvtypes ]]; then
    _tvtypes "$@"
else
    compdef _tvtypes tvtypes
fi
)zsh";

/// Returns a name and what it stands for, as _describe reads them.
std::string described(const Command& command) {
    return singleQuoted(command.name + ":" + withBackslashes(command.description, ":\\"));
}

/// Returns what _arguments takes behind the name of an option: a message, and an action that adds
/// the candidates.
std::string argumentPart(const Argument& argument) {
    std::string action = " ";
    if (argument.offer == Offer::Choices) {
        action = fmt::format("({})", fmt::join(argument.words, " "));
    } else if (argument.offer == Offer::Files) {
        const std::string endings = fmt::format("{}", fmt::join(argument.words, "|"));
        // Parentheses around a single word would be a qualifier.
        action = fmt::format(R"zsh(_files -g "*{}")zsh",
                             argument.words.size() > 1 ? "(" + endings + ")" : endings);
    } else if (argument.offer != Offer::Nothing) {
        // A blank keeps the arguments as they are.
        action = fmt::format(" _tvtypes_list {}", nameOf(argument.offer));
    }
    return fmt::format(":{}:{}", withBackslashes(argument.name, ":\\"), action);
}

/// Returns an argument of _arguments, on a line of its own.
std::string callArgument(const std::string& text) {
    return " \\\n                " + singleQuoted(text);
}

std::string branch(const Command& command) {
    std::string callArguments;
    forEachName(command, [&](const Option& option, const std::string& name) {
        const std::string others =
            option.names.size() > 1 ? fmt::format("({})", fmt::join(option.names, " ")) : "";
        callArguments += callArgument(fmt::format(
            "{}{}{}[{}]{}", option.isRepeated ? "*" : others, name,
            option.takesArgument() ? "=" : "", withBackslashes(option.description, "[]\\"),
            option.takesArgument() ? argumentPart(option.argument) : ""));
    });
    for (const Option& positional : command.positionals) {
        callArguments +=
            callArgument((positional.isRepeated ? "*" : "") + argumentPart(positional.argument));
    }
    return fmt::format("        {})\n            _arguments -S :{}\n            ;;\n", command.name,
                       callArguments);
}

} // namespace

std::string zshScript(const Tool& tool) {
    std::string commands;
    std::string branches = branch(tool.call);
    for (const Command& command : tool.commands) {
        commands += fmt::format("            {}\n", described(command));
        branches += branch(command);
    }
    return beginning + commands + middle + branches + ending;
}

} // namespace tvtool::usage
