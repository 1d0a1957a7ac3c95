/// \file
/// The whole tool as one function.
#pragma once

#include <iosfwd>

namespace tvtool {

/// What the tool's exit status says.
enum ExitStatus : int {
    ExitClean = 0,    ///< nothing is wrong
    ExitProblems = 1, ///< the model has problems, or values lost what they were not to lose
    ExitUnusable = 2  ///< the file cannot be read, or the call is wrong
};

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool colour = false;        ///< whether `out` may be given colour
    bool errIsTerminal = false; ///< whether what stands in `err` can be written over
};

/// Does what the command line asks for and gives the exit status.
int runTool(int argc, const char* const* argv, const Streams& streams);

} // namespace tvtool
