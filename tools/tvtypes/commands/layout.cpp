// tvtypes layout: reports or draws the memory layout of the structs of a model.
#include "commands/commands.h"
#include "files/output_file.h"
#include "model/memory_map.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace tvtool {

namespace {

struct Options {
    std::string file;
    std::string type;
    std::string svg;
    bool json = false;
};

constexpr const char* footer =
    "Struct types come from structured names: with variableNamingConvention=\"structured\",\n"
    "wheel[1].hub.speed is an element of hub, and hub one of wheel. Derivatives, further names of\n"
    "a variable, and variables of types that have no place in the table are no elements. Copies "
    "in\n"
    "an array of structs count from 0, as in memory.\n"
    "\n"
    "  tvtypes layout vehicle.xml\n"
    "  tvtypes layout vehicle.fmu wheel.hub --svg hub.svg\n"
    "\n"
    "Exit status: 0 no problems, 1 problems in the model, 2 the file cannot be read, the picture\n"
    "cannot be written or the call is wrong.";

void writePicture(const Options& options, const model::MemoryMaps& maps) {
    files::OutputFile file(options.svg, options.file, files::InPlace::Refused);
    std::ostringstream picture;
    // Without this, the stream turns std::bad_alloc into a state.
    picture.exceptions(std::ios_base::badbit);
    model::drawLayout(maps, picture);
    file.write(picture.view().data(), picture.view().size());
    file.commit();
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
        if (maps.problems > 0) {
            console.err << fmt::format("tvtypes: {}: the description has {}; tvtypes inspect "
                                       "tells more\n",
                                       file, text::counted(maps.problems, "problem", "problems"));
            console.status = ExitProblems;
        }
    } catch (const files::ReadError& error) {
        reportUnreadable(options.file, error, console);
    } catch (const model::UnknownStruct& error) {
        console.err << fmt::format("tvtypes: {}: {}\n", file, text::safeText(error.what()));
        console.status = ExitUnusable;
    }
}

} // namespace

void addLayout(CLI::App& app, Console& console) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "layout", "Show where in memory the elements of the structs of a model lie");
    addDescriptionFile(command, options->file);
    command
        .add_option("TYPE", options->type,
                    "A struct type, by its name or by a path in the description; without it, all "
                    "that no other struct holds")
        ->type_name("");
    CLI::Option* const svg =
        command
            .add_option("--svg", options->svg,
                        "Draw a picture into this file instead, which cannot be FILE")
            ->type_name("OUT");
    command.add_flag("--json", options->json, "Print one JSON object")->excludes(svg);
    command.footer(footer);
    command.callback([options, &console] { layOut(*options, console); });
}

} // namespace tvtool
