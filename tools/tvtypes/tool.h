/// \file
/// The whole tool as one function.
#pragma once

#include <iosfwd>

namespace tvtool {

/// What the tool's exit status says.
enum ExitStatus : int {
    ExitClean = 0,    ///< nothing is wrong
    ExitProblems = 1, ///< the model has problems
    ExitUnusable = 2  ///< the file cannot be read, or the call is wrong
};

/// Does what the command line asks for and gives the exit status. `colour` says whether `out` may
/// be given colour.
int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            bool colour = false);

} // namespace tvtool
