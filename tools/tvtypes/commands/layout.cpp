// tvtypes layout: reports or draws the memory layout of the structs of a model.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "files/output_file.h"
#include "findings/text.h"
#include "model/memory_map.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace tvtool {

namespace layoutCommand {
namespace {

struct Options {
    std::string file;
    std::string type;
    std::string svg;
    bool json = false;
    bool all = false;
};

constexpr const char* footer =
    "Struct types come from structured names: with variableNamingConvention=\"structured\",\n"
    "wheel[1].hub.speed is an element of hub, and hub one of wheel. Structs with the same "
    "elements\n"
    "in any order are one type, with the order of the first one. Derivatives, further names of a\n"
    "variable, and variables of types that have no place in the table are no elements. Instances\n"
    "whose indices begin with 0 or 1 and have no gap are an array, where the last index varies\n"
    "fastest. All names and indices are those of the description.\n"
    "\n"
    "  tvtypes layout vehicle.xml\n"
    "  tvtypes layout vehicle.fmu wheel[2].hub --svg hub.svg\n"
    "  unzip -p vehicle.fmu modelDescription.xml | tvtypes layout - --svg - >all.svg\n"
    "\n"
    "Exit status: 0 no findings about structs, or notes only; 1 errors or warnings about structs,\n"
    "which standard error lists (tvtypes inspect lists all findings); 2 the file cannot be read, "
    "the\n"
    "picture cannot be written or the call is wrong.";

void writePicture(const Options& options, const model::MemoryMaps& maps) {
    files::OutputFile file(options.svg, options.file, files::InPlace::Refused);
    std::ostringstream picture;
    // Without this, the stream turns std::bad_alloc into a state.
    picture.exceptions(std::ios_base::badbit);
    model::drawLayout(maps, picture);
    file.write(picture.view().data(), picture.view().size());
    file.commit();
}

/// Prints the findings about structs to standard error, and sets the status.
void printFindings(const Options& options, const model::MemoryMaps& maps, Console& console) {
    findings::TextPrinter({.colour = false, .all = options.all}, console.err)
        .print(maps.findings, maps.file);
    if (maps.problems() > 0) {
        console.status = ExitProblems;
    }
}

void layOut(const Options& options, Console& console) {
    const std::string file = text::safeText(options.file);
    try {
        const model::MemoryMaps maps =
            model::mapStructs(*model::readModel(options.file), options.file, options.type);
        if (!options.svg.empty() && !maps.structs.empty()) {
            writePicture(options, maps);
        } else {
            print(maps, options.json, console);
        }
        printFindings(options, maps, console);
    } catch (const files::ReadError& error) {
        reportUnreadable(options.file, error, console);
    } catch (const model::UnknownStruct& error) {
        console.err << fmt::format("tvtypes: {}: {}\n", file, text::safeText(error.what()));
        console.status = ExitUnusable;
    }
}

} // namespace
} // namespace layoutCommand

void addLayout(CLI::App& app, Console& console) {
    using namespace layoutCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "layout", "Show where in memory the elements of the structs of a model lie");
    addDescriptionFile(command, options->file);
    command
        .add_option(
            "TYPE", options->type,
            "A struct, by its path in the description or by the name of its type; without it, "
            "all types that no other struct holds")
        ->type_name("");
    CLI::Option* const svg =
        command
            .add_option("--svg", options->svg,
                        "Draw a picture into this file instead, which cannot be FILE; - is "
                        "standard output")
            ->type_name(fileType("OUT", {".svg"}));
    command.add_flag("--json", options->json, "Print one JSON object")->excludes(svg);
    command.add_flag("--all", options->all, "Print every finding about structs on its own");
    command.footer(footer);
    command.callback([options, &console] { layOut(*options, console); });
}

} // namespace tvtool
