#include "commands/definition.h"

#include "commands/argument_type.h"
#include "commands/commands.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace tvtool {

namespace {

usage::Option definitionOf(const CLI::Option& option) {
    usage::Option definition{.names = {},
                             .argument = argumentOf(option),
                             .description = option.get_description(),
                             .group = option.get_group(),
                             .isRepeated = option.get_expected_max() > 1,
                             .isRequired = option.get_required()};
    for (const std::string& name : option.get_snames()) {
        definition.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        definition.names.push_back("--" + name);
    }
    return definition;
}

usage::Command definitionOf(const CLI::App& command) {
    usage::Command definition{
        command.get_name(), command.get_description(), command.get_footer(), {}, {}};
    for (const CLI::Option* const option : command.get_options()) {
        (option->get_positional() ? definition.positionals : definition.options)
            .push_back(definitionOf(*option));
    }
    return definition;
}

/// Returns the argument that is one of the commands.
usage::Option commandArgument(const std::vector<usage::Command>& commands) {
    usage::Option argument{.names = {},
                           .argument = {"COMMAND", usage::Offer::Choices},
                           .description = "",
                           .group = ""};
    for (const usage::Command& command : commands) {
        argument.argument.words.push_back(command.name);
    }
    return argument;
}

} // namespace

usage::Tool definitionsIn(const CLI::App& app) {
    usage::Tool tool{definitionOf(app), {}};
    for (const CLI::App* const command :
         app.get_subcommands([](const CLI::App*) { return true; })) {
        tool.commands.push_back(definitionOf(*command));
    }
    // The library has no such command: the call is read as that of --help.
    tool.commands.push_back({.name = "help",
                             .description = "Show how to call a command",
                             .footer = "",
                             .options = {},
                             .positionals = {commandArgument(tool.commands)}});
    tool.call.positionals = {commandArgument(tool.commands)};
    return tool;
}

usage::Tool toolDefinition() {
    std::istringstream in;
    std::ostringstream out;
    Console console{{in, out, out}};
    CLI::App app;
    addCommands(app, console);
    return definitionsIn(app);
}

} // namespace tvtool
