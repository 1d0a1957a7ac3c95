#include "commands/call.h"

#include "commands/argument_type.h"
#include "commands/usage_error.h"
#include "text/quote.h"
#include "text/suggestion.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <set>
#include <string_view>

namespace tvtool {

namespace {

constexpr std::string_view mark = "--";

bool isNegativeNumber(const std::string& argument) {
    char* stop = nullptr;
    std::strtod(argument.c_str(), &stop);
    return argument.starts_with('-') && stop == argument.c_str() + argument.size() &&
           argument.size() > 1;
}

bool isList(const std::string& argument) {
    return argument.starts_with('[') && argument.ends_with(']');
}

/// Returns whether the parser takes the argument for an option. "-" is the standard input.
bool isOption(const std::string& argument) {
    return argument.starts_with('-') && argument.size() > 1 && !isNegativeNumber(argument);
}

/// Returns whether a command has any number of texts as arguments, and ignores blanks around them.
bool takesTexts(std::string_view command) { return command == "dims" || command == "unit"; }

const CLI::App* findCommand(const CLI::App& app, const std::string& name) {
    const auto commands =
        app.get_subcommands([&](const CLI::App* each) { return each->get_name() == name; });
    return commands.empty() ? nullptr : commands.front();
}

std::set<std::string> optionNames(const CLI::App& command) {
    std::set<std::string> names;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.insert("--" + name);
        }
    }
    return names;
}

[[noreturn]] void failUnknown(const char* kind, const std::string& name,
                              const std::set<std::string>& known, const std::string& advice = {}) {
    const std::string suggestion = text::nearestChoice(name, known).value_or("");
    throw UsageError(fmt::format("unknown {} {}{}", kind, text::quoted(name),
                                 suggestion.empty() ? advice : text::meantText(suggestion)),
                     name, suggestion);
}

void checkCommand(const CLI::App& app, const std::string& name) {
    if (findCommand(app, name) == nullptr) {
        std::set<std::string> names;
        for (const CLI::App* const command :
             app.get_subcommands([](const CLI::App*) { return true; })) {
            names.insert(command->get_name());
        }
        failUnknown("command", name, names);
    }
}

/// Checks an option in the place of the command. `command` is the first argument that names one.
void checkFirst(const CLI::App& app, const std::string& option, const CLI::App* command) {
    if (app.get_option_no_throw(option) != nullptr) {
        return;
    }
    if (option == mark) {
        throw UsageError("there is no command before --");
    }
    if (command != nullptr && command->get_option_no_throw(option) != nullptr) {
        throw UsageError(fmt::format("{} goes behind the command: tvtypes {} {}", option,
                                     command->get_name(), option),
                         option);
    }
    failUnknown("option", option, optionNames(app));
}

/// Checks the options behind a command.
class OptionCheck {
  public:
    explicit OptionCheck(const CLI::App& command) : command_(command) {}

    /// \param next the argument behind it; null if there is none
    void check(const std::string& argument, const std::string* next) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const CLI::Option* const option = command_.get_option_no_throw(name);
        if (option == nullptr) {
            failUnknown("option", name, optionNames(command_), adviceOnMinus(argument));
        }
        const bool hasArgument = equals != std::string::npos;
        const bool takesArgument = option->get_items_expected_max() > 0;
        if (hasArgument && !takesArgument) {
            throw UsageError(fmt::format("{} takes no argument", name), argument);
        }
        if (takesArgument && !hasArgument && (next == nullptr || isOption(*next))) {
            const std::string type = argumentOf(*option).name;
            const bool isText =
                next != nullptr && *next != mark && command_.get_option_no_throw(*next) == nullptr;
            throw UsageError(fmt::format("{} needs an argument, as in {} {}{}", name, name, type,
                                         isText ? fmt::format("; one that begins with a minus is "
                                                              "given as {}={}",
                                                              name, *next)
                                                : ""),
                             name);
        }
        if (!seen_.insert(option).second && takesArgument &&
            option->get_items_expected_max() == 1) {
            throw UsageError(fmt::format("{} is given twice", name), name);
        }
    }

  private:
    std::string adviceOnMinus(const std::string& argument) const {
        return argument.starts_with(mark)
                   ? ""
                   : fmt::format("; an argument that begins with a minus goes behind --, as in "
                                 "tvtypes {} -- {}",
                                 command_.get_name(), text::shortened(argument));
    }

    const CLI::App& command_;
    std::set<const CLI::Option*> seen_;
};

} // namespace

Call::Call(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {
    if (!arguments_.empty() && arguments_.front() == "help") {
        arguments_.erase(arguments_.begin());
        arguments_.resize(std::min<std::size_t>(arguments_.size(), 1));
        arguments_.emplace_back("--help");
    }
}

bool Call::hasJson() const {
    const auto end = std::ranges::find(arguments_, mark);
    return std::find(arguments_.begin(), end, "--json") != end;
}

std::string Call::command(const CLI::App& app) const {
    return !isEmpty() && findCommand(app, arguments_.front()) != nullptr ? arguments_.front() : "";
}

void Call::check(const CLI::App& app) const {
    if (isOption(arguments_.front())) {
        const auto name = std::ranges::find_if(arguments_, [&](const std::string& argument) {
            return findCommand(app, argument) != nullptr;
        });
        checkFirst(app, arguments_.front(),
                   name == arguments_.end() ? nullptr : findCommand(app, *name));
        return;
    }
    checkCommand(app, arguments_.front());
    OptionCheck options(*findCommand(app, arguments_.front()));
    for (std::size_t i = 1; i < arguments_.size() && arguments_[i] != mark; ++i) {
        if (isOption(arguments_[i])) {
            options.check(arguments_[i], i + 1 < arguments_.size() ? &arguments_[i + 1] : nullptr);
        }
    }
}

std::vector<std::string> Call::parserArguments() const {
    std::vector<std::string> arguments;
    bool isAfterMark = false;
    for (const std::string& argument : arguments_) {
        if (takesTexts(arguments_.front()) && !isAfterMark && argument == mark) {
            isAfterMark = true;
            continue;
        }
        const bool isValue = isAfterMark || isNegativeNumber(argument) || isList(argument);
        arguments.push_back((isValue ? " " : "") + argument);
    }
    std::ranges::reverse(arguments);
    return arguments;
}

} // namespace tvtool
