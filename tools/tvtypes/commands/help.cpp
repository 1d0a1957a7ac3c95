#include "commands/help.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <sstream>
#include <string>

namespace tvtool {

namespace {

constexpr std::size_t lineWidth = 80;
constexpr std::size_t nameWidth = 26;

std::string wrapped(const std::string& text) {
    std::string lines;
    std::size_t column = 0;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool fits = nameWidth + column + 1 + word.size() <= lineWidth;
        lines += column == 0 ? "" : fits ? " " : "\n";
        column = column == 0 || !fits ? word.size() : column + 1 + word.size();
        lines += word;
    }
    return lines;
}

/// Wraps the descriptions of options, which the formatter of the library leaves in one line.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter() {
        column_width(nameWidth);
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        return wrapped(option->get_description());
    }
    std::string make_subcommand(const CLI::App* command) const override {
        std::ostringstream line;
        CLI::detail::format_help(line, command->get_name(), wrapped(command->get_description()),
                                 get_column_width());
        return line.str();
    }
};

} // namespace

void formatHelp(CLI::App& app) {
    const auto formatter = std::make_shared<HelpFormatter>();
    app.formatter(formatter);
    app.set_help_flag("-h,--help", "Print this help");
    for (CLI::App* const command : app.get_subcommands([](CLI::App*) { return true; })) {
        command->formatter(formatter);
        command->group("Commands");
        command->set_help_flag("-h,--help", "Print this help");
    }
    app.footer("tvtypes help COMMAND, or tvtypes COMMAND --help, shows how to call a command. "
               "Arguments that\nbegin with a minus and are no options go behind --. With --json, "
               "every command prints one\nJSON object, also for an error.");
}

} // namespace tvtool
