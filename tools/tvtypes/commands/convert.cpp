// tvtypes convert: conversion of values between the built-in types.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "convert/conversion.h"
#include "convert/report.h"
#include "files/output_file.h"
#include "files/stream_errors.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tvtool {

namespace convertCommand {
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
    std::string outFormat;
    bool table = false;
    bool strict = false;
    bool json = false;
};

constexpr const char* footer =
    "TYPE is double, single, int8, uint8, int16, uint16, int32, uint32 or boolean. Values may "
    "also\n"
    "come from int64 or uint64, if doubles have them exactly, as which they are read.\n"
    "\n"
    "Values are read from VALUES, from the file of --in, or else from the standard input, as\n"
    "numbers with blanks or line breaks between them. A NumPy file (.npy) is recognized by its\n"
    "first bytes, also on the standard input. Any other file of --in holds little-endian values\n"
    "of --from and nothing else.\n"
    "\n"
    "Results are written one a line, or with --out to a file, which appears, or is replaced, when\n"
    "all values are converted; it may be that of --in. A file whose name ends in .npy becomes a\n"
    "NumPy file, any other one holds little-endian values and nothing else. - is the standard\n"
    "input or output.\n"
    "\n"
    "A line on the standard error says how many values lost something, which are those that\n"
    "differ when they are converted back, how many of these overflowed, the greatest absolute\n"
    "error of the finite values, and how many values are NaN or infinite. With --json the object\n"
    "has this instead, and the results if there are at most 1000 of them and no --out.\n"
    "\n"
    "  tvtypes convert --to int8 --round near --overflow wrap 127.5 -0.5 nan\n"
    "  tvtypes convert --in samples.npy --to int16 --out samples16.npy\n"
    "  generate | tvtypes convert --in - --from int16 --to single --out - | play\n"
    "\n"
    "Exit status: 0 converted, 1 converted but --strict is given and something was lost, 2 the\n"
    "values cannot be read or written or the call is wrong.";

std::optional<StoredType> storedTypeOrNone(const std::string& name) {
    return name.empty() ? std::nullopt : std::optional(parseStoredType("--from", name));
}

std::optional<Format> formatOrNone(const char* option, const std::string& name) {
    if (name.empty()) {
        return std::nullopt;
    }
    if (name != "raw" && name != "npy") {
        throw text::choiceError(option, name, "raw or npy", {"raw", "npy"});
    }
    return name == "npy" ? Format::Npy : Format::Raw;
}

/// Returns whether the standard input begins like a NumPy file, which no text does.
bool beginsLikeNpy(std::istream& is) {
    files::throwOnFailure(is);
    try {
        return is.peek() == static_cast<unsigned char>(npyMagic.front());
    } catch (const std::ios_base::failure& failure) {
        throw Error("standard input " + files::failureText(failure));
    }
}

/// Returns the source that the options select. Values of the call are read from `text`.
std::unique_ptr<Source> openSource(const Options& options, std::istream& text, Console& console) {
    const std::optional<StoredType> from = storedTypeOrNone(options.from);
    if (options.in) {
        return openFile(*options.in, console.in, formatOrNone("--format", options.format), from);
    }
    if (options.values.empty() && beginsLikeNpy(console.in)) {
        return openFile(files::standardStream, console.in, Format::Npy, from);
    }
    return readText(options.values.empty() ? console.in : text, from.value_or(StoredType{}));
}

/// Returns the path of what openSource() reads; empty for values of the call.
std::string inputPath(const Options& options) {
    const bool isStandard =
        options.in ? *options.in == files::standardStream : options.values.empty();
    return isStandard ? "/dev/stdin" : options.in.value_or("");
}

Format outputFormat(const Options& options) {
    return formatOrNone("--out-format", options.outFormat)
        .value_or(isNpyName(*options.out) ? Format::Npy : Format::Raw);
}

/// Returns what a summary says of the order of the results; empty if there is nothing to say.
std::string orderRemark(const Options& options, const Source& source) {
    const std::optional<Shape> shape = source.shape();
    const bool isFortran = shape && shape->fortranOrder && shape->sizes.size() > 1;
    const bool keepsOrder = options.out && outputFormat(options) == Format::Npy;
    return isFortran && !keepsOrder ? "; in Fortran order, the first index varies fastest" : "";
}

std::string sourceName(const Source& source) {
    const StoredType stored = source.storedType();
    return stored.wide == Wide::None ? elementName(source.element())
                                     : fmt::format("{} (read as double)", typeName(stored));
}

void printReport(const Options& options, const Source& source, const Conversion& conversion,
                 std::optional<boost::json::array> values, Console& console) {
    const StoredType stored = source.storedType();
    printJson(ConversionReport{stored.wide == Wide::None ? elementName(conversion.source())
                                                         : typeName(stored),
                               elementName(conversion.destination()), options.rounding,
                               options.overflow, conversion.losses(), std::move(values)},
              console.out);
}

void convertValues(const Options& options, Source& source, Console& console) {
    Conversion conversion(source.element(),
                          destinationOf(source.element(), parseType("--to", options.to)),
                          {parseOverflow("--overflow", options.overflow),
                           parseRounding("--round", options.rounding)});
    const Element element = conversion.destination();
    CollectingSink results(element);
    {
        std::unique_ptr<Sink> sink;
        if (options.out) {
            sink = createFile(*options.out, inputPath(options), outputFormat(options), element,
                              source.shape());
        } else if (!options.json) {
            sink = writeText(console.out, element);
        }
        const bool showsProgress = console.errIsTerminal && options.out.has_value();
        convertAll(source, conversion, sink ? *sink : results,
                   showsProgress ? &console.err : nullptr);
    }
    if (options.json) {
        printReport(options, source, conversion, options.out ? std::nullopt : results.values(),
                    console);
    } else {
        console.err << fmt::format("{} to {}: {}{}\n", sourceName(source), elementName(element),
                                   conversion.losses().summary(), orderRemark(options, source));
    }
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
} // namespace convertCommand

void addConvert(CLI::App& app, Console& console) {
    using namespace convertCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "convert", "Convert values between the built-in types, and tell what that loses");
    command
        .add_option("VALUES", options->values,
                    "Numbers; besides decimal as nan, inf, 0x1f or 0x1.8p-3")
        ->type_name("");
    command
        .add_option("--from", options->from,
                    "What the values are; by default double, or what a NumPy file holds")
        ->type_name(choiceType("TYPE", storedTypeNames()));
    command.add_option("--to", options->to, "What they become")
        ->type_name(choiceType("TYPE", typeNames()));
    command
        .add_option("--round", options->rounding,
                    "zero (toward zero, the default), near (ties up), ceil, floor, round (ties "
                    "away from zero) or convergent (ties to even)")
        ->type_name(choiceType("MODE", namesOf(roundings)));
    command
        .add_option("--overflow", options->overflow,
                    "saturate (the default) or wrap values beyond the range of the type")
        ->type_name(choiceType("MODE", namesOf(overflows)));
    command.add_option("--in", options->in, "Read the values from a file")
        ->type_name(fileType("FILE", {".npy"}));
    command
        .add_option("--format", options->format,
                    "What that file is, whatever its name and its first bytes")
        ->type_name(choiceType({"raw", "npy"}));
    command.add_option("--out", options->out, "Write the results to a file")
        ->type_name(fileType("FILE", {".npy"}));
    command
        .add_option("--out-format", options->outFormat, "What that file becomes, whatever its name")
        ->type_name(choiceType({"raw", "npy"}));
    command.add_flag("--strict", options->strict, "Exit with 1 if a value lost something");
    command.add_flag("--table", options->table,
                     "Show each value under all modes, converted to int8 unless --to is given");
    command.add_flag("--json", options->json, "Print a report as one JSON object");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkExclusion(command, "--in", {"VALUES"});
        checkExclusion(command, "--table",
                       {"--in", "--round", "--overflow", "--out", "--strict", "--json"});
        checkRequirement(command, {"--format"}, "--in");
        checkRequirement(command, {"--out-format"}, "--out");
        if (options->json && options->out == files::standardStream) {
            throw UsageError("--json and --out - cannot be given together");
        }
        if (options->to.empty() && !options->table) {
            throw UsageError("--to TYPE is missing, what the values become");
        }
        execute(*options, console);
    });
}

} // namespace tvtool
