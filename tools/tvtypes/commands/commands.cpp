#include "commands/commands.h"

#include "commands/argument_type.h"
#include "commands/help.h"
#include "text/excerpt.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstddef>
#include <ostream>
#include <utility>

namespace tvtool {

void addCommands(CLI::App& app, Console& console) {
    app.name("tvtypes");
    app.description("Works with the data types of block-diagram models.");
    app.set_version_flag("-V,--version", versionText,
                         "Print the version, the instruction set in use, and the number of units");
    app.require_subcommand(0, 1);
    addCheck(app, console);
    addCompletion(app, console);
    addConvert(app, console);
    addDims(app, console);
    addFixpt(app, console);
    addInspect(app, console);
    addLayout(app, console);
    addUnit(app, console);
    formatHelp(app);
}

void addDescriptionFile(CLI::App& command, std::string& file) {
    command
        .add_option("FILE", file,
                    "A modelDescription.xml in FMI 2 or 3, or a .fmu archive that holds one")
        ->type_name(fileType("", modelEndings))
        ->required();
}

std::string withoutBlank(std::string text) {
    return text.starts_with(' ') ? text.substr(1) : std::move(text);
}

void Console::fail(output::Failure reason, const std::string& lines) {
    err << lines;
    status = ExitUnusable;
    if (!failure) {
        failure = std::move(reason);
    }
}

void reportUnreadable(const std::string& file, const files::ReadError& error, Console& console) {
    const std::string place =
        error.line == 0 ? ""
                        : fmt::format(":{}{}", error.line,
                                      error.column == 0 ? "" : fmt::format(":{}", error.column));
    console.fail({error.what(), file, error.line, error.column, {}, {}},
                 fmt::format("tvtypes: {}{}: {}\n", text::safeText(file), place,
                             text::safeText(error.what())));
}

void reportUnreadable(const text::ParseError& error, Console& console) {
    const std::size_t column = text::columnOf(error.text, error.position);
    console.fail({error.what(), {}, 0, column, error.text, error.suggestion},
                 fmt::format("tvtypes: {}: column {}: {}\n{}",
                             text::safeText(text::quoted(error.text)), column,
                             text::safeText(error.what()),
                             text::excerptAt(error.text, error.position)));
}

} // namespace tvtool
