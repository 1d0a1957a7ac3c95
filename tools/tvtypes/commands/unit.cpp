// tvtypes unit: details of units, conversion factors, and search.
#include "commands/commands.h"
#include "commands/exclusion.h"
#include "units/report.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

namespace {

struct Options {
    std::vector<std::string> units;
    std::optional<std::string> prefix;
    std::optional<std::string> word;
    std::string system;
    std::string quantity;
    bool factor = false;
    bool list = false;
    bool json = false;
};

constexpr const char* footer =
    "A unit is a name, symbol or alias, or an expression such as kg*m/s^2. Other ways to write\n"
    "units, as N.m, m.s-1 or µm, are read as such expressions.\n"
    "\n"
    "  tvtypes unit mile \"W/(m2.K)\"\n"
    "  tvtypes unit --factor km/h m/s\n"
    "  tvtypes unit --list --quantity pressure\n"
    "\n"
    "Exit status: 0 all is known, 1 there is no such factor, 2 a unit is not known or the call is\n"
    "wrong.";

void showUnits(const Options& options, Console& console) {
    TVTypeSys::UnitTable table;
    std::vector<units::UnitDetails> details;
    for (const std::string& text : options.units) {
        try {
            details.push_back(units::unitDetails(text, table));
        } catch (const text::ParseError& error) {
            reportUnreadable(error, console);
        }
    }
    print(details, options.json, console);
}

void showFactor(const Options& options, Console& console) {
    TVTypeSys::UnitTable table;
    const units::UnitFactor factor =
        units::factorBetween(options.units[0], options.units[1], table);
    print(factor, options.json, console);
    if (factor.differs) {
        console.err << fmt::format("tvtypes: the library's factor is {}, the exact one {}\n",
                                   *factor.factor, *factor.exactDecimal);
    }
    if (!factor.factor) {
        console.status = ExitProblems;
    }
}

void execute(const Options& options, Console& console) {
    try {
        if (options.factor) {
            showFactor(options, console);
        } else if (options.prefix) {
            print(units::completions(*options.prefix), options.json, console);
        } else if (options.word) {
            print(units::unitsWith(*options.word), options.json, console);
        } else if (options.list) {
            print(units::unitsOf(options.system, options.quantity), options.json, console);
        } else {
            showUnits(options, console);
        }
    } catch (const text::ParseError& error) {
        reportUnreadable(error, console);
    }
}

} // namespace

void addUnit(CLI::App& app, Console& console) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "unit", "Show what units mean and how they convert, and look for units");
    command.add_option("UNIT", options->units, "Show all about these units")->type_name("");
    command.add_flag("--factor", options->factor,
                     "Show the factor from the first of two units to the second");
    command
        .add_option("--complete", options->prefix,
                    "List the names, symbols and aliases that begin like this")
        ->type_name("PREFIX");
    command
        .add_option("--search", options->word,
                    "List the units of which this stands in a name, an alias or the quantity")
        ->type_name("WORD");
    command.add_flag("--list", options->list, "List all units");
    command.add_option("--system", options->system, "With --list: those of a system only")
        ->type_name("NAME");
    command.add_option("--quantity", options->quantity, "With --list: those that measure this")
        ->type_name("NAME");
    command.add_flag("--json", options->json, "Print one JSON object");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkExclusion(command, "--list", {"UNIT", "--factor", "--complete", "--search"});
        checkExclusion(command, "--search", {"UNIT", "--factor", "--complete"});
        checkExclusion(command, "--complete", {"UNIT", "--factor"});
        checkRequirement(command, {"--system", "--quantity"}, "--list");
        const std::size_t count = options->units.size();
        if (options->factor && count != 2) {
            throw CLI::ValidationError("--factor", "takes two units");
        }
        if (count == 0 && !options->prefix && !options->word && !options->list) {
            throw CLI::RequiredError("UNIT");
        }
        execute(*options, console);
    });
}

} // namespace tvtool
