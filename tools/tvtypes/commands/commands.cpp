#include "commands/commands.h"

#include "text/excerpt.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <ostream>
#include <utility>

namespace tvtool {

void addDescriptionFile(CLI::App& command, std::string& file) {
    command
        .add_option("FILE", file,
                    "A modelDescription.xml in FMI 2 or 3, or a .fmu archive that holds one")
        ->type_name("")
        ->required();
}

std::string withoutBlank(std::string text) {
    return text.starts_with(' ') ? text.substr(1) : std::move(text);
}

void reportUnreadable(const std::string& file, const files::ReadError& error, Console& console) {
    const std::string place =
        error.line == 0 ? "" : fmt::format(":{}:{}", error.line, error.column);
    console.err << fmt::format("tvtypes: {}{}: {}\n", text::safeText(file), place,
                               text::safeText(error.what()));
    console.status = ExitUnusable;
}

void reportUnreadable(const text::ParseError& error, Console& console) {
    console.err << fmt::format(
        "tvtypes: {}: column {}: {}\n{}", text::safeText(text::quoted(error.text)),
        text::columnOf(error.text, error.position), text::safeText(error.what()),
        text::excerptAt(error.text, error.position));
    console.status = ExitUnusable;
}

} // namespace tvtool
