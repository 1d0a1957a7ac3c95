#include "usage/quoting.h"
#include "usage/scripts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvtool::usage {

namespace {

constexpr const char* functions =
    R"fish(# fish completion of tvtypes, printed by: tvtypes completion fish

# Whether no command has been typed.
function __tvtypes_has_none
    test (count (commandline -opc)) -eq 1
end

# Whether this is the command.
function __tvtypes_is -a command
    set -l words (commandline -opc)
    test (count $words) -gt 1; and test "$words[2]" = $command
end

# Whether this positional argument of a command is typed. Options with arguments follow.
function __tvtypes_position -a command position
    __tvtypes_is $command; or return
    set -l words (commandline -opc)
    set -l number 1
    set -l is_argument 0
    for word in $words[3..]
        if test $is_argument -eq 1
            set is_argument 0
        else if contains -- $word $argv[3..]
            set is_argument 1
        else if not string match -q -- '-*' $word
            set number (math $number + 1)
        end
    end
    test $number -eq $position
end

# Prints what is typed of the argument, without the name of its option and without quotes.
function __tvtypes_typed
    commandline -ct | string replace -r '^--[a-z-]+=' '' | string replace -ar '[\\\\"\']' ''
end

# Prints directories, and the files with one of these endings, or all files if there is none.
function __tvtypes_files
    set -l endings (string escape --style=regex -- $argv | string join '|')
    set -l typed (__tvtypes_typed)
    set -l files (__fish_complete_path "$typed" | string replace -r '\t.*' '')
    if string match -qr -- "(?:$endings)\$" $files
        string match -r -- "^.*(?:$endings|/)\$" $files
    else
        printf '%s\n' $files
    end
end

# Prints what the tool lists.
function __tvtypes_list -a kind
    set -l words (commandline -opc)
    set -l tool (string replace -r '^~/' $HOME/ -- $words[1])
    set -l typed (__tvtypes_typed)
    type -q -- $tool; and $tool completion $kind "$typed" 2>/dev/null
end

complete -c tvtypes -f
)fish";

/// Returns the part of a call of complete that says what the argument is.
std::string argumentPart(const Argument& argument) {
    const std::string words = fmt::format("{}", fmt::join(argument.words, " "));
    switch (argument.offer) {
    case Offer::Nothing:
        return "";
    case Offer::Choices:
        return " -a " + fishQuoted(words);
    case Offer::Files:
        return " -a " + fishQuoted(fmt::format("(__tvtypes_files {})", words));
    default:
        return " -a " + fishQuoted(fmt::format("(__tvtypes_list {})", nameOf(argument.offer)));
    }
}

std::string completeCall(const std::string& condition, const std::string& rest) {
    return fmt::format("complete -c tvtypes -n {}{}\n", fishQuoted(condition), rest);
}

std::string optionCalls(const std::string& condition, const Command& command) {
    std::string calls;
    for (const Option& option : command.options) {
        std::string names;
        for (const std::string& name : option.names) {
            names += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        calls += completeCall(condition, names + (option.takesArgument() ? " -x" : "") +
                                             argumentPart(option.argument) + " -d " +
                                             fishQuoted(option.description));
    }
    return calls;
}

std::string positionalCalls(const Command& command) {
    std::string valued;
    forEachName(command, [&](const Option& option, const std::string& name) {
        valued += option.takesArgument() ? " " + name : "";
    });
    std::string calls;
    for (std::size_t i = 0; i < command.positionals.size(); ++i) {
        const Option& positional = command.positionals[i];
        if (positional.argument.offer != Offer::Nothing) {
            calls += completeCall(positional.isRepeated ? "__tvtypes_is " + command.name
                                                        : fmt::format("__tvtypes_position {} {}{}",
                                                                      command.name, i + 1, valued),
                                  argumentPart(positional.argument));
        }
    }
    return calls;
}

} // namespace

std::string fishScript(const Tool& tool) {
    const std::string noCommand = "__tvtypes_has_none";
    std::string text = functions + optionCalls(noCommand, tool.call);
    for (const Command& command : tool.commands) {
        text += completeCall(
            noCommand, fmt::format(" -a {} -d {}", command.name, fishQuoted(command.description)));
    }
    for (const Command& command : tool.commands) {
        text += optionCalls("__tvtypes_is " + command.name, command) + positionalCalls(command);
    }
    return text;
}

} // namespace tvtool::usage
