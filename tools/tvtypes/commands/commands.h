/// \file
/// The commands of the tool. Each stands in a file of its own and adds itself to the command line.
#pragma once

#include "files/read_error.h"
#include "tool.h"

#include <cstddef>
#include <string>

namespace CLI {
class App;
}

namespace tvtool {

/// Where a command reads and writes, and how it went.
struct Console : Streams {
    int status = ExitClean;
};

/// A command does its work when the command line that names it has been read.
void addConvert(CLI::App& app, Console& console);
void addDims(CLI::App& app, Console& console);
void addFixpt(CLI::App& app, Console& console);
void addInspect(CLI::App& app, Console& console);
void addLayout(CLI::App& app, Console& console);
void addUnit(CLI::App& app, Console& console);

/// Prints a report as JSON or as text.
template <class Report>
void print(const Report& report, bool isJson, Console& console) {
    if (isJson) {
        printJson(report, console.out);
    } else {
        printText(report, console.colour, console.out);
    }
}

/// Says, with the place, why a description cannot be read.
void reportUnreadable(const std::string& file, const files::ReadError& error, Console& console);

/// Says why an argument cannot be read, and points at the byte.
void reportUnreadable(const std::string& argument, std::size_t position, const char* reason,
                      Console& console);

} // namespace tvtool
