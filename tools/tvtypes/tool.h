/// \file
/// The tool as one function.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <limits>

namespace tvtool {

/// The exit status of the tool.
enum ExitStatus : int {
    ExitClean = 0,    ///< no problems
    ExitProblems = 1, ///< problems of the model, or values changed although that was excluded
    ExitUnusable = 2  ///< the file cannot be read, or the command line is invalid
};

/// What the tool prints when memory runs out.
inline constexpr const char* memoryLine = "tvtypes: there is not enough memory\n";

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool colour = false;        ///< whether to print colours to `out`
    bool errIsTerminal = false; ///< whether lines in `err` can be overwritten
    /// Columns of a line of `out`; unlimited if it is no terminal.
    std::size_t width = std::numeric_limits<std::size_t>::max();
};

/// Runs the command line and returns the exit status.
int runTool(int argc, const char* const* argv, const Streams& streams);

} // namespace tvtool
