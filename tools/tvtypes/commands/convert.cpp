// tvtypes convert: conversion of values between the built-in types.
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "convert/conversion.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace tvtool {

namespace {

using namespace convert;

struct Options {
    std::vector<std::string> values;
    std::string from;
    std::string to;
    std::string rounding = "zero";
    std::string overflow = "saturate";
    std::optional<std::string> in;
    std::optional<std::string> out;
    std::string format;
    bool table = false;
    bool strict = false;
};

constexpr const char* footer =
    "TYPE is double, single, int8, uint8, int16, uint16, int32, uint32 or boolean.\n"
    "\n"
    "Without VALUES and --in, values are read from standard input. The results are written one a\n"
    "line. A line on standard error says how many values lost something, which are those that\n"
    "differ when they are converted back, and how many of these overflowed. A file is a NumPy "
    "file\n"
    "if its name ends in .npy, else it holds little-endian values and nothing else. The file of\n"
    "--out appears, or is replaced, when all values are converted; it may be that of --in.\n"
    "\n"
    "  tvtypes convert --to int8 --round near --overflow wrap 127.5 -0.5 nan\n"
    "  tvtypes convert --in samples.npy --to int16 --out samples16.npy\n"
    "\n"
    "Exit status: 0 converted, 1 converted but --strict is given and something was lost, 2 the\n"
    "values cannot be read or written or the call is wrong.";

std::optional<Type> typeOrNone(const char* option, const std::string& name) {
    return name.empty() ? std::nullopt : std::optional(parseType(option, name));
}

Format formatNamed(const std::string& name) {
    if (name != "raw" && name != "npy") {
        throw text::choiceError("--format", name, "raw or npy", {"raw", "npy"});
    }
    return name == "npy" ? Format::Npy : Format::Raw;
}

/// Returns the source that the options select. Values of the call are read from `text`.
std::unique_ptr<Source> openSource(const Options& options, std::istream& text, Console& console) {
    const std::optional<Type> from = typeOrNone("--from", options.from);
    if (options.in) {
        return openFile(
            *options.in,
            options.format.empty() ? formatOf(*options.in) : formatNamed(options.format), from);
    }
    return readText(options.values.empty() ? console.in : text, from.value_or(Type::Double));
}

/// Returns the path of what openSource() reads; empty for values of the call.
std::string inputPath(const Options& options) {
    return options.in ? *options.in : options.values.empty() ? "/dev/stdin" : "";
}

std::unique_ptr<Sink> openSink(const Options& options, Element element, const Source& source,
                               Console& console) {
    return !options.out ? writeText(console.out, element)
                        : createFile(*options.out, inputPath(options), formatOf(*options.out),
                                     element, source.shape());
}

void convertValues(const Options& options, Source& source, Console& console) {
    Conversion conversion(source.element(), parseType("--to", options.to),
                          {parseOverflow("--overflow", options.overflow),
                           parseRounding("--round", options.rounding)});
    {
        const auto sink = openSink(options, conversion.destination(), source, console);
        const bool showsProgress = console.errIsTerminal && options.out.has_value();
        convertAll(source, conversion, *sink, showsProgress ? &console.err : nullptr);
    }
    console.err << fmt::format("{} to {}: {}\n", elementName(conversion.source()),
                               elementName(conversion.destination()),
                               conversion.losses().summary());
    if (options.strict && conversion.losses().lost.count > 0) {
        console.status = ExitProblems;
    }
}

void execute(const Options& options, Console& console) {
    std::istringstream text(fmt::format("{}", fmt::join(options.values, "\n")));
    const auto source = openSource(options, text, console);
    if (options.table) {
        const Type to = options.to.empty() ? Type::Int8 : parseType("--to", options.to);
        printModes(*source, to, console.colour, console.out);
    } else {
        convertValues(options, *source, console);
    }
}

} // namespace

void addConvert(CLI::App& app, Console& console) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "convert", "Convert values between the built-in types, and tell what that loses");
    command
        .add_option("VALUES", options->values,
                    "Numbers; besides decimal as nan, inf, 0x1f or 0x1.8p-3")
        ->type_name("");
    command
        .add_option("--from", options->from,
                    "What the values are; if it is not given, double or what a NumPy file holds")
        ->type_name("TYPE");
    command.add_option("--to", options->to, "What they become")->type_name("TYPE");
    command
        .add_option("--round", options->rounding,
                    "zero (toward zero, the default), near (ties up), ceil, floor, round (ties "
                    "away from zero) or convergent (ties to even)")
        ->type_name("MODE");
    command
        .add_option("--overflow", options->overflow,
                    "saturate (the default) or wrap what the type has no room for")
        ->type_name("MODE");
    command.add_option("--in", options->in, "Read the values from a file")->type_name("FILE");
    command.add_option("--format", options->format, "What that file is, whatever its name")
        ->type_name("raw|npy");
    command.add_option("--out", options->out, "Write the results to a file")->type_name("FILE");
    command.add_flag("--strict", options->strict, "Exit with 1 if a value lost something");
    command.add_flag("--table", options->table,
                     "Show each value under all modes, to int8 if --to says nothing else");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkExclusion(command, "--in", {"VALUES"});
        checkExclusion(command, "--table", {"--in", "--round", "--overflow", "--out", "--strict"});
        checkRequirement(command, {"--format"}, "--in");
        if (options->to.empty() && !options->table) {
            throw UsageError("--to TYPE is missing, what the values become");
        }
        execute(*options, console);
    });
}

} // namespace tvtool
