/// \file
/// The form of the help.
#pragma once

namespace CLI {
class App;
}

namespace tvtool {

/// Gives the help of the tool and of its commands one form: lines of at most 80 columns, and the
/// help of the tool lists all ways to ask for help.
void formatHelp(CLI::App& app);

} // namespace tvtool
