#include "usage/scripts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvtool::usage {

namespace {

constexpr const char* beginning =
    R"bash(# bash completion of tvtypes, printed by: tvtypes completion bash

# Adds the words that begin with what is typed.
_tvtypes_words() {
    local word
    for word; do
        [[ $word != "$current"* ]] || COMPREPLY+=("$word")
    done
}

# Adds directories, and the files with one of these endings, or all files if there is none.
_tvtypes_files() {
    local file ending files=()
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$current")
    while IFS= read -r file; do
        for ending; do
            [[ $file != *"$ending" ]] || files+=("$file")
        done
    done < <(compgen -f -- "$current")
    if ((${#files[@]} > 0)); then
        COMPREPLY+=("${files[@]}")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

# Adds what the tool lists.
_tvtypes_list() {
    local word
    while IFS=$'\t' read -r word _; do
        # Characters that end a word or that the shell interprets, unless quotes have been opened.
        if [[ -z $quote && $word == *[\(\)\'\"\ \;\&\<\>\|\$]* ]]; then
            printf -v word %q "$word"
        fi
        COMPREPLY+=("$word")
    done < <("${COMP_WORDS[0]/#~\//$HOME/}" completion "$1" "$current" 2>/dev/null)
}

_tvtypes() {
    local command=${COMP_WORDS[1]-} current=${COMP_WORDS[COMP_CWORD]} quote='' options='' valued=''
    local previous='' word i position=0 marked=''
    COMPREPLY=()
    # Quotes and backslashes are those of the line, not of the argument.
    if [[ $current == [\"\']* ]]; then
        quote=${current:0:1} current=${current:1}
    else
        current=${current//\\/}
    fi
    ((COMP_CWORD > 1)) || command=tvtypes
    case $command in
)bash";

constexpr const char* middle = R"bash(    esac
    # The line is split at =, which is a word of its own.
    for ((i = COMP_CWORD > 1 ? 2 : 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $marked ]]; then
            ((++position))
        elif [[ $word == -- ]]; then
            marked=1
        elif [[ $word == = ]]; then
            ((++i))
        elif [[ $word == -* && $valued == *" $word "* ]]; then
            [[ ${COMP_WORDS[i + 1]} == = ]] || ((++i))
        elif [[ $word != -* || $word =~ ^-[0-9.] ]]; then
            ((++position))
        fi
    done
    if [[ ! $marked ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 1]}
        if [[ $current == = && $previous == --* ]]; then
            current=
        elif [[ $previous == = ]]; then
            previous=${COMP_WORDS[COMP_CWORD - 2]}
        fi
        if [[ $valued != *" $previous "* ]]; then
            previous=
            if [[ $current == -* ]]; then
                # shellcheck disable=SC2086
                _tvtypes_words $options
                return
            fi
        fi
    fi
    case $command:${previous:-$((position + 1))} in
)bash";

constexpr const char* ending = R"bash(    esac
}

complete -F _tvtypes tvtypes
)bash";

/// Returns the call that adds the candidates for an argument; empty if there are none.
std::string callFor(const Argument& argument) {
    const std::string words = fmt::format("{}", fmt::join(argument.words, " "));
    switch (argument.offer) {
    case Offer::Nothing:
        return "";
    case Offer::Choices:
        return "_tvtypes_words " + words;
    case Offer::Files:
        return "_tvtypes_files " + words;
    default:
        return fmt::format("_tvtypes_list {}", nameOf(argument.offer));
    }
}

std::string branch(const std::string& pattern, const Argument& argument) {
    const std::string call = callFor(argument);
    return call.empty() ? "" : fmt::format("    {}) {} ;;\n", pattern, call);
}

std::string optionsOf(const Command& command) {
    std::string options;
    std::string valued = " ";
    forEachName(command, [&](const Option& option, const std::string& name) {
        options += (options.empty() ? "" : " ") + name;
        valued += option.takesArgument() ? name + " " : "";
    });
    return fmt::format("    {})\n        options='{}'\n        valued='{}'\n        ;;\n",
                       command.name, options, valued);
}

/// Returns the branches for the arguments of a command. Those of its options, which have names,
/// come before the last positional argument, which can be repeated.
std::string argumentsOf(const Command& command) {
    std::string branches;
    forEachName(command, [&](const Option& option, const std::string& name) {
        branches += branch(command.name + ":" + name, option.argument);
    });
    for (std::size_t i = 0; i < command.positionals.size(); ++i) {
        const Option& positional = command.positionals[i];
        branches += branch(positional.isRepeated ? command.name + ":[1-9]*"
                                                 : fmt::format("{}:{}", command.name, i + 1),
                           positional.argument);
    }
    return branches;
}

} // namespace

std::string bashScript(const Tool& tool) {
    std::string options = optionsOf(tool.call);
    std::string arguments = argumentsOf(tool.call);
    for (const Command& command : tool.commands) {
        options += optionsOf(command);
        arguments += argumentsOf(command);
    }
    return beginning + options + middle + arguments + ending;
}

} // namespace tvtool::usage
