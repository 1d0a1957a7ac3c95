/// \file
/// The definitions of the commands, read from the command line library.
#pragma once

#include "usage/definition.h"

namespace CLI {
class App;
}

namespace tvtool {

/// Returns the definitions of all commands that have been added.
usage::Tool definitionsIn(const CLI::App& app);

/// Returns the definitions of the tool.
usage::Tool toolDefinition();

} // namespace tvtool
