/// \file
/// The commands of the tool, each in a file of its own.
#pragma once

#include "files/read_error.h"
#include "tool.h"

#include <cstddef>
#include <string>

namespace CLI {
class App;
}

namespace tvtool {

/// The streams of a command, and the exit status that it sets.
struct Console : Streams {
    int status = ExitClean;
};

/// Adds a command to the command line. Parsing a command line with its name runs it.
void addConvert(CLI::App& app, Console& console);
void addDims(CLI::App& app, Console& console);
void addFixpt(CLI::App& app, Console& console);
void addInspect(CLI::App& app, Console& console);
void addLayout(CLI::App& app, Console& console);
void addUnit(CLI::App& app, Console& console);

/// Adds the required argument for a model description.
void addDescriptionFile(CLI::App& command, std::string& file);

/// Prints a report as JSON or as text.
template <class Report>
void print(const Report& report, bool isJson, Console& console) {
    if (isJson) {
        printJson(report, console.out);
    } else {
        printText(report, console.colour, console.out);
    }
}

/// Prints the error and sets the exit status.
void reportUnreadable(const std::string& file, const files::ReadError& error, Console& console);

/// Same for an argument, with an excerpt that marks the byte at which parsing failed.
void reportUnreadable(const std::string& argument, std::size_t position, const char* reason,
                      Console& console);

} // namespace tvtool
