// tvtypes inspect: reports the interface and the data types of a model, and what is wrong with it.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/finding_options.h"
#include "commands/usage_error.h"
#include "files/output_file.h"
#include "findings/selection.h"
#include "findings/text.h"
#include "fmi/description_files.h"
#include "output/json.h"
#include "output/terminal.h"
#include "page/page.h"
#include "report/inspection.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

namespace inspectCommand {
namespace {

using findings::Severity;
using report::VariableChoice;
using report::VariableOrder;

struct Options {
    std::vector<std::string> files;
    FindingOptions findings;
    std::string html; ///< path of the page; empty for none
    report::Options report;
    bool isJson = false;
    bool listsVariables = false; ///< whether the call says which variables to list
};

class Inspector {
  public:
    Inspector(const Options& options, Console& console)
        : options_(options),
          console_(console),
          selection_(options.findings.select, options.findings.ignore),
          printer_({console.colour, options.findings.showsAll}, console.out) {}

    void inspectFile(const std::string& file) {
        try {
            print(*readModel(file), file, !options_.findings.isQuiet);
        } catch (const files::ReadError& error) {
            reportUnreadable(file, error, console_);
        }
    }

    /// Inspects files and directories: a line for each file and its findings, and the total.
    void inspectAll() {
        const std::vector<fmi::DescriptionFile> found = fmi::findDescriptionFiles(options_.files);
        if (found.empty()) {
            return reportUnreadable(options_.files.front(),
                                    files::ReadError("is a directory without model descriptions"),
                                    console_);
        }
        Progress progress(console_, found.size());
        for (const fmi::DescriptionFile& file : found) {
            progress.show(++total_.files, file.path);
            try {
                if (!file.error.empty()) {
                    throw files::ReadError(file.error);
                }
                const std::unique_ptr<model::Model> model = readModel(file.path);
                total_.add(model->findings.count(Severity::Error),
                           model->findings.count(Severity::Warning),
                           model->findings.count(Severity::Note));
                progress.clear();
                print(*model, file.path, options_.listsVariables && !options_.findings.isQuiet);
            } catch (const files::ReadError& error) {
                progress.clear();
                printUnreadable(file.path, error);
            }
        }
        printTotal();
    }

  private:
    std::unique_ptr<model::Model> readModel(const std::string& file) const {
        std::unique_ptr<model::Model> model = model::readModel(file);
        if (!selection_.containsAll()) {
            model->findings.retain(
                [this](findings::Code code) { return selection_.contains(code); });
        }
        return model;
    }

    /// Prints the report of a model, with its sections or only its summary and its findings.
    void print(const model::Model& model, const std::string& file, bool hasSections) {
        const findings::Findings& found = model.findings;
        raiseStatus(console_, options_.findings.statusOf(found.count(Severity::Error),
                                                         found.count(Severity::Warning)));
        if (!options_.html.empty()) {
            writePage(model, file);
            return;
        }
        if (hasSections || options_.isJson) {
            const report::Inspection inspection(model, file, options_.report);
            tvtool::print(inspection, options_.isJson, console_);
            return;
        }
        if (!options_.findings.isQuiet) {
            const report::Variables variables(model, {VariableChoice::None, {}});
            output::printWrapped(report::summaryText(model, file, variables), 4, console_.out);
        }
        printer_.print(found.all(), file);
    }

    void writePage(const model::Model& model, const std::string& file) const {
        files::OutputFile output(options_.html, file, files::InPlace::Refused);
        report::Options all = options_.report;
        all.variables = VariableChoice::All;
        const std::string html = page::htmlPage(report::Inspection(model, file, all));
        output.write(html.data(), html.size());
        output.commit();
    }

    void printUnreadable(const std::string& file, const files::ReadError& error) {
        ++total_.unreadable;
        tvtool::printUnreadable("inspect", file, error, options_.isJson, console_);
    }

    void printTotal() {
        if (options_.isJson) {
            output::printJson(output::envelope("inspect", {{"total", total_.json()}}),
                              console_.out);
        } else if (!options_.findings.isQuiet) {
            output::printWrapped(total_.text(), 4, console_.out);
        }
    }

    const Options& options_;
    Console& console_;
    const findings::Selection selection_;
    findings::TextPrinter printer_;
    Total total_;
};

void inspect(const Options& options, Console& console) {
    try {
        Inspector inspector(options, console);
        if (options.files.size() == 1 && !fmi::isDirectory(options.files.front())) {
            inspector.inspectFile(options.files.front());
        } else if (!options.html.empty()) {
            throw UsageError("--html writes the page of one FILE, which is no directory");
        } else {
            inspector.inspectAll();
        }
    } catch (const text::ParseError& error) {
        reportUnreadable(error, console);
    }
}

void addListing(CLI::App& command, Options& options) {
    addChoice<VariableChoice>(command, "--variables", options.report.variables,
                              "Which variables to list: interface (inputs, outputs and parameters; "
                              "the default), all or none",
                              "CHOICE",
                              {{"all", VariableChoice::All},
                               {"interface", VariableChoice::Interface},
                               {"none", VariableChoice::None}});
    command
        .add_option("--filter", options.report.filters,
                    "List the variables whose names match a pattern with *, ? and [...]")
        ->type_name("GLOB")
        ->allow_extra_args(false);
    addChoice<VariableOrder>(command, "--sort", options.report.order,
                             "Order of the variables: line (of the description; the default), "
                             "name, type or unit",
                             "KEY",
                             {{"line", VariableOrder::Line},
                              {"name", VariableOrder::Name},
                              {"type", VariableOrder::Type},
                              {"unit", VariableOrder::Unit}});
    command.add_flag("--ids", options.report.showsIds, "Show the ids that the library assigns");
}

} // namespace
} // namespace inspectCommand

void addInspect(CLI::App& app, Console& console) {
    using namespace inspectCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        *app.add_subcommand("inspect", "Show the interface and the data types of a model, and what "
                                       "is wrong with its description");
    command
        .add_option("FILE", options->files,
                    "Descriptions (modelDescription.xml in FMI 2 or 3), .fmu archives, directories "
                    "that contain them, or - for standard input")
        ->type_name(fileType("", modelEndings))
        ->required();
    addListing(command, *options);
    addFindingOptions(command, options->findings);
    command.add_flag("--json", options->isJson, "Print one JSON object for each file");
    command
        .add_option("--html", options->html,
                    "Write an HTML page with all variables into this file instead; - is the "
                    "standard output")
        ->type_name(fileType("OUT", {".html"}));
    command.footer("Several files, or a directory, get a line each, their findings and a total.\n"
                   "Exit status: 0 no errors, 1 errors in a model, 2 a file cannot be read or the "
                   "call is wrong.");
    command.callback([options, &command, &console] {
        checkExclusion(command, "--html", {"--json", "--quiet"});
        options->report.showsAllFindings = options->findings.showsAll;
        options->listsVariables = command.count("--variables") + command.count("--filter") > 0;
        inspect(*options, console);
    });
}

} // namespace tvtool
