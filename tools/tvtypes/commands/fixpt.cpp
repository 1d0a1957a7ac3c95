// tvtypes fixpt: details of numeric types, and quantization of values.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "convert/names.h"
#include "files/file_error.h"
#include "files/output_file.h"
#include "files/stream_errors.h"
#include "fixedpoint/identifier.h"
#include "fixedpoint/record.h"
#include "fixedpoint/report.h"

#include <CLI/CLI.hpp>

#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

namespace fixptCommand {
namespace {

struct Options {
    std::vector<std::string> names;
    fixedpoint::RecordTexts record;
    bool overrideOff = false;
    std::vector<std::string> atomicWordLengths;
    std::vector<std::string> values;
    std::string overflow = "saturate";
    bool json = false;
};

constexpr const char* footer =
    "A real-world value is slope * stored integer + bias, and the slope is factor * 2^exponent.\n"
    "A NAME is sfix, ufix, or for scaled doubles flts or fltu, then the word length, then _E with\n"
    "the exponent, or _S with the slope, or _F with the factor and _E, then _B with the bias. In\n"
    "numbers n is a minus and p the point. The built-in types have names of their own. A\n"
    "constructor is a NAME too: fixdt(1,16,12).\n"
    "\n"
    "  tvtypes fixpt sfix16_En12 ufix8_Sp375_Bn10 \"fixdt(0,8,0.5,-10)\"\n"
    "  tvtypes fixpt --word-length 16 --slope 0.01 --bias -40\n"
    "  tvtypes fixpt sfix8_En4 --quantize 0.1 3.14159 -2\n"
    "\n"
    "Exit status: 0 shown, 2 a NAME is not one, a value cannot be stored or the call is wrong.";

fxpDataTypeProp withOverride(fxpDataTypeProp record, const Options& options) {
    if (options.overrideOff) {
        record.DataTypeOverrideState = 1;
    }
    return record;
}

void showTypes(const Options& options, Console& console) {
    TVTypeSys::DataTypeTable table;
    std::vector<int> atomicWordLengths;
    for (const std::string& text : options.atomicWordLengths) {
        atomicWordLengths.push_back(fixedpoint::parseWordLength("--atomic-word-length", text));
    }
    fixedpoint::setAtomic(atomicWordLengths, table);
    std::vector<fixedpoint::TypeDetails> types;
    if (options.names.empty()) {
        types.push_back(fixedpoint::typeDetails(
            "", withOverride(fixedpoint::makeRecord(options.record), options), table));
    }
    for (const std::string& name : options.names) {
        try {
            types.push_back(fixedpoint::typeDetails(
                name, withOverride(fixedpoint::parseTypeName(name), options), table));
        } catch (const text::ParseError& error) {
            reportUnreadable(error, console);
        }
    }
    print(types, options.json, console);
}

/// Returns the values of the call, with the words of the standard input in the place of "-".
std::vector<std::string> valuesOf(const Options& options, std::istream& is) {
    std::vector<std::string> values;
    for (const std::string& value : options.values) {
        if (value != files::standardStream) {
            values.push_back(value);
            continue;
        }
        files::throwOnFailure(is);
        try {
            for (std::string word; is >> word;) {
                values.push_back(word);
            }
        } catch (const std::ios_base::failure& failure) {
            throw files::FileError(value, files::failureText(failure));
        }
    }
    return values;
}

void showQuantization(const Options& options, Console& console) {
    try {
        const fxpDataTypeProp record = options.names.empty()
                                           ? fixedpoint::makeRecord(options.record)
                                           : fixedpoint::parseTypeName(options.names.front());
        const auto overflow = convert::parseOverflow("--overflow", options.overflow);
        print(fixedpoint::quantize(valuesOf(options, console.in), record, overflow), options.json,
              console);
    } catch (const text::ParseError& error) {
        reportUnreadable(error, console);
    }
}

/// Adds the options that describe a type without a name.
void addRecordOptions(CLI::App& command, fixedpoint::RecordTexts& texts) {
    const char* const group = "Options in the place of NAME";
    const auto add = [&](const char* name, auto& text, const char* help, const std::string& type) {
        command.add_option(name, text, help)
            ->type_name(type)
            ->transform(withoutBlank)
            ->group(group);
    };
    add("--signed", texts.signedness, "The signedness; 1 by default",
        choiceType({"0", "1", "open"}));
    add("--word-length", texts.wordLength, "The word length", "BITS");
    add("--slope", texts.slope, "The slope, a number or a power such as 2^-4", "S");
    add("--factor", texts.factor, "The slope's factor, from 1 to less than 2", "F");
    add("--exponent", texts.exponent, "The slope's exponent", "E");
    add("--fraction-length", texts.fractionLength, "The slope's exponent negated", "L");
    add("--bias", texts.bias, "The bias", "B");
    command.add_flag("--scaled-double", texts.isScaledDouble, "Make it a scaled double")
        ->group(group);
}

void checkCall(const CLI::App& command) {
    const bool quantizes = command.count("--quantize") > 0;
    const bool hasType = command.count("NAME") > 0 || command.count("--word-length") > 0;
    if (quantizes && !hasType) {
        throw UsageError("--quantize needs a NAME before it, or --word-length");
    }
    checkExclusion(command, "NAME",
                   {"--signed", "--word-length", "--slope", "--factor", "--exponent",
                    "--fraction-length", "--bias", "--scaled-double"});
    checkExclusion(command, "--slope", {"--factor", "--exponent", "--fraction-length"});
    checkExclusion(command, "--fraction-length", {"--factor", "--exponent"});
    if (!hasType) {
        checkRequirement(command,
                         {"--signed", "--slope", "--factor", "--exponent", "--fraction-length",
                          "--bias", "--scaled-double"},
                         "--word-length");
        throw UsageError("NAME is missing, or --word-length BITS");
    }
    checkExclusion(command, "--quantize", {"--atomic-word-length", "--override-off"});
    checkRequirement(command, {"--overflow"}, "--quantize");
    if (quantizes && command.count("NAME") > 1) {
        throw UsageError("--quantize needs one NAME before it, and no others");
    }
}

} // namespace
} // namespace fixptCommand

void addFixpt(CLI::App& app, Console& console) {
    using namespace fixptCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "fixpt", "Show what numeric types are, and how values are stored in them");
    command.add_option("NAME", options->names, "Show all about these types")
        ->type_name("")
        ->transform(withoutBlank);
    addRecordOptions(command, options->record);
    command.add_flag("--override-off", options->overrideOff,
                     "Data type override is off, as constructors have it");
    command
        .add_option("--atomic-word-length", options->atomicWordLengths,
                    "Word lengths that the target accesses atomically")
        ->type_name("BITS")
        ->transform(withoutBlank);
    command
        .add_option("--quantize", options->values,
                    "Show how these decimal numbers are stored in the type, which is named before; "
                    "- reads them from the standard input")
        ->type_name("VALUE")
        ->transform(withoutBlank);
    command
        .add_option("--overflow", options->overflow,
                    "With --quantize: saturate (the default) or wrap values beyond the range of "
                    "the type")
        ->type_name(choiceType("MODE", convert::namesOf(convert::overflows)));
    command.add_flag("--json", options->json, "Print one JSON object");
    command.footer(footer);
    command.callback([options, &command, &console] {
        checkCall(command);
        if (command.count("--quantize") > 0) {
            showQuantization(*options, console);
        } else {
            showTypes(*options, console);
        }
    });
}

} // namespace tvtool
