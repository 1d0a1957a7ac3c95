// tvtypes unit: details of units, conversion factors, and search.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "files/output_file.h"
#include "files/stream_errors.h"
#include "text/quote.h"
#include "text/safe_text.h"
#include "units/report.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tvtool {

namespace unitCommand {
namespace {

struct Options {
    std::vector<std::string> units;
    std::optional<std::string> prefix;
    std::optional<std::string> word;
    std::string system;
    std::string quantity;
    bool factor = false;
    bool difference = false;
    bool list = false;
    bool json = false;
};

constexpr const char* footer =
    "A unit is a name, symbol or alias, or an expression such as kg*m/s^2. Other ways to write\n"
    "units, as N.m, m.s-1 or µm, are read as such expressions.\n"
    "\n"
    "Values before two units are converted from the first unit to the second; - reads the values\n"
    "from standard input. Results are exact unless they are marked \"about\" (rounded) or\n"
    "\"measured\".\n"
    "\n"
    "  tvtypes unit mile \"W/(m2.K)\"\n"
    "  tvtypes unit 20 -40 degC degF\n"
    "  tvtypes unit --factor km/h m/s\n"
    "  tvtypes unit --list --quantity pressure\n"
    "\n"
    "Exit status: 0 all is known; 1 the units do not convert, or with --factor the library has no\n"
    "factor or a wrong one; 2 a unit is not known, a value is not a number or the call is wrong.";

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

void printNotes(const std::vector<std::string>& notes, Console& console) {
    constexpr std::size_t longest = 1000;
    for (const std::string& note : notes) {
        console.err << fmt::format("tvtypes: {}\n", text::safeText(text::shortened(note, longest)));
    }
}

units::Values valuesOf(const Options& options) {
    return options.difference ? units::Values::Differences : units::Values::Points;
}

void showFactor(const Options& options, Console& console) {
    TVTypeSys::UnitTable table;
    const units::UnitFactor factor =
        units::factorBetween(options.units[0], options.units[1], valuesOf(options), table);
    print(factor, options.json, console);
    printNotes(units::allNotes(factor.notes, factor.libraryNote), console);
    if (factor.own && !factor.factor) {
        printNotes({"the library has no factor: " + factor.reason}, console);
    }
    if (!factor.factor || factor.isWrong) {
        console.status = ExitProblems;
    }
}

/// Converts the numbers of standard input, up to an error of the output. Throws a files::ReadError.
void convertInput(const units::ValueConversion& conversion, units::ConversionReport& report,
                  Console& console) {
    units::Words words(console.in);
    try {
        for (std::string word; console.out && words.next(word);) {
            report.add(conversion.convert(word));
        }
    } catch (const std::invalid_argument& error) {
        throw files::ReadError(error.what(), words.line());
    } catch (const std::ios_base::failure& failure) {
        throw files::ReadError(files::failureText(failure));
    }
}

/// Converts values: numbers, or "-" for those of standard input, and two units.
void convertValues(const Options& options, Console& console) {
    const std::size_t count = options.units.size() - 2;
    TVTypeSys::UnitTable table;
    const units::ValueConversion conversion(options.units[count], options.units[count + 1],
                                            valuesOf(options), table);
    std::vector<units::ConvertedValue> values;
    const bool readsInput = options.units[0] == "-";
    for (std::size_t i = 0; i < count && conversion.exists() && !readsInput; ++i) {
        values.push_back(conversion.convert(options.units[i]));
    }
    units::ConversionReport report(conversion, options.json, console.out);
    std::ranges::for_each(values, [&](const auto& value) { report.add(value); });
    printNotes(units::allNotes(conversion.notes(), conversion.libraryNote()), console);
    if (conversion.exists() && readsInput) {
        try {
            convertInput(conversion, report, console);
        } catch (const files::ReadError& error) {
            // The object in JSON has the values before the error as well.
            const output::Failure failure{error.what(), files::standardStream, error.line};
            report.finish(&failure);
            reportUnreadable("standard input", error, console);
            console.failure.reset();
            return;
        }
    }
    report.finish();
    if (!conversion.exists()) {
        printNotes({"no conversion: " + conversion.reason()}, console);
        console.status = ExitProblems;
    }
}

/// Returns whether the texts are values and units, not units alone.
bool isConversion(const Options& options) {
    return options.units.size() > 1 && !options.factor &&
           (options.units[0] == "-" || units::isDecimal(options.units[0]));
}

void execute(const Options& options, Console& console) {
    try {
        if (options.factor) {
            showFactor(options, console);
        } else if (isConversion(options)) {
            convertValues(options, console);
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
} // namespace unitCommand

void addUnit(CLI::App& app, Console& console) {
    using namespace unitCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "unit", "Show what units mean and how they convert, and look for units");
    command
        .add_option("UNIT", options->units,
                    "Show all about these units; with values before two units, convert the values")
        ->type_name(typeText({"", usage::Offer::Units}))
        ->transform(withoutBlank);
    command.add_flag("--factor", options->factor,
                     "Show the factor from the first of two units to the second");
    command.add_flag("--difference", options->difference,
                     "Values are differences, as of temperatures: offsets are left out");
    command
        .add_option("--complete", options->prefix,
                    "List the names, symbols and aliases that begin like this")
        ->type_name(typeText({"PREFIX", usage::Offer::Units}));
    command
        .add_option("--search", options->word,
                    "List the units of which this stands in a name, an alias or the quantity")
        ->type_name("WORD");
    command.add_flag("--list", options->list, "List all units");
    command.add_option("--system", options->system, "With --list: those of a system only")
        ->type_name(typeText({"NAME", usage::Offer::Systems}));
    command.add_option("--quantity", options->quantity, "With --list: those that measure this")
        ->type_name(typeText({"NAME", usage::Offer::Quantities}));
    command.add_flag("--json", options->json, "Print one JSON object");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkExclusion(command, "--list", {"UNIT", "--factor", "--complete", "--search"});
        checkExclusion(command, "--search", {"UNIT", "--factor", "--complete"});
        checkExclusion(command, "--complete", {"UNIT", "--factor"});
        checkRequirement(command, {"--system", "--quantity"}, "--list");
        checkExclusion(command, "--difference", {"--list", "--search", "--complete"});
        const std::size_t count = options->units.size();
        if (isConversion(*options) && count < 3) {
            throw UsageError("values need two units behind them, as in 20 degC degF");
        }
        if (options->difference && !options->factor && !isConversion(*options)) {
            throw UsageError("--difference needs values and two units, or --factor");
        }
        if (options->factor && count != 2) {
            throw UsageError("--factor needs two units");
        }
        if (count == 0 && !options->prefix && !options->word && !options->list) {
            throw UsageError("UNIT is missing");
        }
        execute(*options, console);
    });
}

} // namespace tvtool
