/// \file
/// The commands of the tool. Each stands in a file of its own and adds itself to the command line.
#pragma once

#include "tool.h"

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
void addInspect(CLI::App& app, Console& console);

} // namespace tvtool
