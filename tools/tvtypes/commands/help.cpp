#include "commands/help.h"

#include "commands/argument_type.h"
#include "output/terminal.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <sstream>
#include <string>

namespace tvtool {

namespace {

constexpr std::size_t lineWidth = 80;
constexpr std::size_t nameWidth = 26;

/// Wraps a text to the column of the descriptions.
std::string wrappedDescription(const std::string& text) {
    return output::wrapped(text, 0, lineWidth - nameWidth);
}

/// Wraps the paragraphs of a text. Lines that begin with a blank are kept.
std::string wrappedParagraphs(const std::string& text) {
    std::istringstream lines(text);
    std::string wrapped;
    std::string paragraph;
    const auto endParagraph = [&] {
        wrapped += paragraph.empty() ? "" : output::wrapped(paragraph, 0, lineWidth) + '\n';
        paragraph.clear();
    };
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == ' ') {
            endParagraph();
            wrapped += line + '\n';
        } else {
            paragraph += (paragraph.empty() ? "" : " ") + line;
        }
    }
    endParagraph();
    return wrapped;
}

/// Wraps the texts, which the formatter of the library leaves as they are.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter() {
        column_width(nameWidth);
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string type = option->get_positional() ? "" : argumentOf(*option).name;
        return (type.empty() ? "" : " " + type) + (option->get_expected_max() > 1 ? " ..." : "");
    }
    std::string make_option_desc(const CLI::Option* option) const override {
        return wrappedDescription(option->get_description());
    }
    std::string make_description(const CLI::App* app) const override {
        return wrappedParagraphs(app->get_description());
    }
    std::string make_footer(const CLI::App* app) const override {
        return wrappedParagraphs(app->get_footer());
    }
    std::string make_subcommand(const CLI::App* command) const override {
        std::ostringstream line;
        CLI::detail::format_help(line, command->get_name(),
                                 wrappedDescription(command->get_description()),
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
               "Arguments that begin with a minus and are no options go behind --. With --json, "
               "every command but completion prints one JSON object, also for an error.");
}

} // namespace tvtool
