// tvtypes inspect: reports the data types of a model.
#include "commands/commands.h"
#include "model/inspection.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>

namespace tvtool {

namespace {

struct Options {
    std::string file;
    bool json = false;
};

void inspect(const Options& options, Console& console) {
    try {
        const model::Inspection inspection =
            model::inspect(*model::readModel(options.file), options.file);
        print(inspection, options.json, console);
        console.status =
            inspection.findings.count(findings::Severity::Error) == 0 ? ExitClean : ExitProblems;
    } catch (const files::ReadError& error) {
        reportUnreadable(options.file, error, console);
    }
}

} // namespace

void addInspect(CLI::App& app, Console& console) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        *app.add_subcommand("inspect", "Show which data types a model has, and what is wrong "
                                       "with its description");
    addDescriptionFile(command, options->file);
    command.add_flag("--json", options->json, "Print one JSON object");
    command.footer("Exit status: 0 no problems, 1 problems in the model, 2 the file cannot be "
                   "read or the call is wrong.");
    command.callback([options, &console] { inspect(*options, console); });
}

} // namespace tvtool
