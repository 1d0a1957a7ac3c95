// tvtypes dims: simplification of dimensions, and checks of facts about them.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "dims/fact_file.h"
#include "dims/report.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

namespace dimsCommand {
namespace {

struct Options {
    std::vector<std::string> expressions;
    std::string file;
    bool list = false;
    bool json = false;
};

constexpr const char* footer =
    "An expression has whole numbers, names, + - * / and parentheses; [2, N] is a list. A name is\n"
    "an identifier, several with points between them, or any text in double quotes: N, sizes.n,\n"
    "\"a[1].n\". An expression that begins with a minus goes behind --.\n"
    "\n"
    "A file of facts has one a line, stated by the block behind the #, or a question:\n"
    "  N > 2     # Gain1\n"
    "  sizes.n == 2*N\n"
    "  sizes.n > 4 ?\n"
    "Sizes are whole numbers that are not negative, unless the file begins with the line\n"
    "integer off; then they are any fractions. Quotients are exact: N/2 is not rounded. Lists are\n"
    "compared by their numbers of elements. All linear facts are solved together; products of\n"
    "sizes without values are solved as far as substitution leads.\n"
    "What --list prints is such a file, and what dims, inspect and check print with --json is\n"
    "read as one.\n"
    "\n"
    "  tvtypes dims \"(2*N + 4)/2\" N+2\n"
    "  tvtypes dims --facts model.facts --list\n"
    "\n"
    "Exit status: 0 no contradiction was found, 1 facts contradict each other, 2 a text is no "
    "expression or\n"
    "no fact, the file cannot be read or the call is wrong.";

void showDims(const Options& options, Console& console) {
    TVTypeSys::SymbolicDimsTable table;
    std::vector<dims::DimsDetails> details;
    for (const std::string& argument : options.expressions) {
        try {
            // Without the blank that keeps the parser from splitting a list.
            dims::addDetails(argument.substr(argument.starts_with(' ') ? 1 : 0), table, details);
        } catch (const text::ParseError& error) {
            reportUnreadable(error, console);
        }
    }
    print(details, options.json, console);
}

void reportFaults(const dims::FactReport& report, Console& console) {
    for (const dims::DimsFault& fault : report.faults) {
        console.err << fmt::format("tvtypes: {}:{}:{}: {}\n{}", text::safeText(report.file),
                                   fault.line, fault.column, text::safeText(fault.sentence),
                                   fault.excerpt);
        console.status = ExitUnusable;
    }
    if (report.lastLine) {
        console.err << fmt::format("tvtypes: {}: nothing is read after line {}\n",
                                   text::safeText(report.file), *report.lastLine);
    }
}

void showFacts(const Options& options, Console& console) {
    try {
        dims::FactReport report =
            options.file == "-" ? dims::readFacts(console.in) : dims::readFactFile(options.file);
        report.file = options.file;
        if (options.json) {
            dims::printJson(report, console.out);
        } else {
            dims::printText(report, options.list, console.colour, console.out);
        }
        console.status = report.objections.empty() ? ExitClean : ExitProblems;
        reportFaults(report, console);
    } catch (const files::ReadError& error) {
        reportUnreadable(options.file, error, console);
    }
}

} // namespace
} // namespace dimsCommand

void addDims(CLI::App& app, Console& console) {
    using namespace dimsCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "dims", "Simplify dimensions that are expressions, and check facts about them");
    command.add_option("EXPR", options->expressions, "Show what these are, simplified")
        ->type_name("");
    command
        .add_option("--facts", options->file,
                    "State the facts in this file and answer its questions; - is the standard "
                    "input")
        ->type_name(fileType("FILE", {".facts", ".json"}));
    command.add_flag("--list", options->list, "With --facts: list them, with their blocks");
    command.add_flag("--json", options->json, "Print one JSON object");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkExclusion(command, "--facts", {"EXPR"});
        checkRequirement(command, {"--list"}, "--facts");
        if (command.count("--facts") > 0) {
            showFacts(*options, console);
        } else if (!options->expressions.empty()) {
            showDims(*options, console);
        } else {
            throw UsageError("EXPR is missing, or --facts FILE");
        }
    });
}

} // namespace tvtool
