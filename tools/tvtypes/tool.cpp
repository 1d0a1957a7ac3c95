#include "tool.h"

#include "commands.h"
#include "report/safe_text.h"

#include <tvtypes/functions.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <exception>
#include <ostream>

namespace tvtool {

namespace {

void parseAndRun(CLI::App& app, int argc, const char* const* argv, Console& console) {
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty()) {
            console.out << app.help();
        }
    } catch (const CLI::Success& request) {
        app.exit(request, console.out, console.err);
    } catch (const CLI::ParseError& error) {
        console.err << fmt::format("tvtypes: {} (tvtypes --help shows how to call it)\n",
                                   report::safeText(error.what()));
        console.status = ExitUnusable;
    }
}

} // namespace

int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err, bool colour) {
    Console console{out, err, colour, ExitClean};
    try {
        CLI::App app("Looks into the data types of block-diagram models.", "tvtypes");
        app.set_version_flag("--version", fmt::format("tvtypes {} ({})", libtv_types_version,
                                                      libtv_types_build_date));
        app.require_subcommand(0, 1);
        addInspect(app, console);
        parseAndRun(app, argc, argv, console);
        if (!out.flush()) {
            err << "tvtypes: the output cannot be written\n";
            console.status = ExitUnusable;
        }
    } catch (const std::exception& error) {
        err << fmt::format("tvtypes: {}\n", report::safeText(error.what()));
        console.status = ExitUnusable;
    }
    return console.status;
}

} // namespace tvtool
