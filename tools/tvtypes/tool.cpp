#include "tool.h"

#include "commands/commands.h"
#include "output/terminal.h"
#include "text/safe_text.h"

#include <tvtypes/functions.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <new>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool {

namespace {

bool isNegativeNumber(const char* argument) {
    char* stop = nullptr;
    std::strtod(argument, &stop);
    return *argument == '-' && stop != argument && *stop == '\0';
}

bool isList(const std::string& argument) {
    return argument.starts_with('[') && argument.ends_with(']');
}

/// Returns whether a command has any number of texts as arguments, and ignores blanks around them.
bool takesTexts(std::string_view command) { return command == "dims" || command == "unit"; }

/// Returns the arguments in reverse order, as the parser expects them. The parser would read -inf
/// as options and [2,N] as two values; a blank before it makes it one value. So it does for texts
/// after
/// "--", which the parser honours only while a command has no text.
std::vector<std::string> parserArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool isAfterMark = false;
    for (int i = 1; i < argc; ++i) {
        if (takesTexts(argv[1]) && !isAfterMark && argv[i] == std::string_view("--")) {
            isAfterMark = true;
            continue;
        }
        const bool isValue = isAfterMark || isNegativeNumber(argv[i]) || isList(argv[i]);
        arguments.push_back((isValue ? " " : "") + std::string(argv[i]));
    }
    std::ranges::reverse(arguments);
    return arguments;
}

void parseAndRun(CLI::App& app, int argc, const char* const* argv, Console& console) {
    try {
        app.parse(parserArguments(argc, argv));
        if (app.get_subcommands().empty()) {
            console.out << app.help();
        }
    } catch (const CLI::Success& request) {
        app.exit(request, console.out, console.err);
    } catch (const CLI::ParseError& error) {
        console.err << fmt::format("tvtypes: {} (tvtypes --help shows how to call it)\n",
                                   text::safeText(error.what()));
        console.status = ExitUnusable;
    }
}

} // namespace

int runTool(int argc, const char* const* argv, const Streams& streams) {
    Console console{streams};
    output::setLineWidth(streams.out, streams.width);
    try {
        CLI::App app("Works with the data types of block-diagram models.", "tvtypes");
        app.set_version_flag("--version", fmt::format("tvtypes {} ({})", libtv_types_version,
                                                      libtv_types_build_date));
        app.require_subcommand(0, 1);
        addConvert(app, console);
        addDims(app, console);
        addFixpt(app, console);
        addInspect(app, console);
        addLayout(app, console);
        addUnit(app, console);
        parseAndRun(app, argc, argv, console);
        if (!console.out.flush()) {
            console.err << "tvtypes: the output cannot be written\n";
            console.status = ExitUnusable;
        }
    } catch (const std::bad_alloc&) {
        console.err << memoryLine;
        console.status = ExitUnusable;
    } catch (const std::exception& error) {
        console.err << fmt::format("tvtypes: {}\n", text::safeText(text::inOneLine(error.what())));
        console.status = ExitUnusable;
    }
    return console.status;
}

} // namespace tvtool
