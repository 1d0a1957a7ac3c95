/// \file
/// The commands of the tool. Each stands in a file of its own and adds itself to the command line.
#pragma once

#include "files/read_error.h"
#include "output/failure.h"
#include "text/parse_error.h"
#include "tool.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tvtool {

/// Where a command reads and writes, and how it went.
struct Console : Streams {
    int status = ExitClean;
    std::optional<output::Failure> failure{}; ///< the first one, which --json prints

    /// Prints why the call failed, in complete lines, and sets the status.
    void fail(output::Failure reason, const std::string& lines);
};

/// Gives the tool its name, its options, its commands, and its help.
void addCommands(CLI::App& app, Console& console);

/// A command does its work when the command line that names it has been read.
void addCheck(CLI::App& app, Console& console);
void addCompletion(CLI::App& app, Console& console);
void addConvert(CLI::App& app, Console& console);
void addDims(CLI::App& app, Console& console);
void addFixpt(CLI::App& app, Console& console);
void addInspect(CLI::App& app, Console& console);
void addLayout(CLI::App& app, Console& console);
void addUnit(CLI::App& app, Console& console);

/// Returns the versions of the library and of what it uses, in lines without an end.
std::string versionText();

/// Adds the argument FILE: a model description, or an archive that contains one.
void addDescriptionFile(CLI::App& command, std::string& file);

/// Removes the blank that keeps the parser from taking a negative number for an option.
std::string withoutBlank(std::string text);

/// Prints a report as JSON or as text. The JSON of a call that failed is that of the failure alone.
template <class Report>
void print(const Report& report, bool isJson, Console& console) {
    if (isJson) {
        if (!console.failure) {
            printJson(report, console.out);
        }
    } else {
        printText(report, console.colour, console.out);
    }
}

/// Prints why a file cannot be read, and sets the exit status.
void reportUnreadable(const std::string& file, const files::ReadError& error, Console& console);

/// Prints why an argument cannot be parsed, with a caret below the position, and sets the status.
void reportUnreadable(const text::ParseError& error, Console& console);

} // namespace tvtool
