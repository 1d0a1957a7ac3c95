/// \file
/// The commands of the tool. Each stands in a file of its own and adds itself to the command line.
#pragma once

#include <CLI/CLI.hpp>

#include <iosfwd>

namespace tvtool {

/// What the tool's exit status says.
enum ExitStatus : int {
    ExitClean = 0,    ///< nothing is wrong
    ExitProblems = 1, ///< the model has problems
    ExitUnusable = 2  ///< the file cannot be read, or the call is wrong
};

/// Where a command writes, and how it went.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool colour = false; ///< whether `out` may be given colour
    int status = ExitClean;
};

/// A command does its work when the command line that names it has been read.
void addInspect(CLI::App& app, Console& console);

/// The whole tool: gives the exit status.
int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            bool colour = false);

} // namespace tvtool
