// tvtypes check: reports what flows between the models of a system, and what is wrong with it.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/finding_options.h"
#include "commands/usage_error.h"
#include "files/output_file.h"
#include "findings/selection.h"
#include "output/json.h"
#include "output/terminal.h"
#include "page/page.h"
#include "systemreport/graph.h"
#include "systemreport/report.h"
#include "text/parse_error.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

namespace tvtool {

namespace checkCommand {
namespace {

using findings::Severity;
using systemreport::ConnectionChoice;
using systemreport::countFindings;

constexpr const char* svgEnding = ".svg";
constexpr const char* dotEnding = ".dot";

struct Options {
    std::vector<std::string> files;
    FindingOptions findings;
    systemreport::Options report;
    std::string html;  ///< path of the page; empty for none
    std::string graph; ///< path of the picture; empty for none
    bool isJson = false;
};

class Checker {
  public:
    Checker(const Options& options, Console& console)
        : options_(options),
          console_(console),
          selection_(options.findings.select, options.findings.ignore) {}

    void checkFile(const std::string& file) {
        try {
            print(*readSystem(file), file, !options_.findings.isQuiet);
        } catch (const files::ReadError& error) {
            reportUnreadable(file, error, console_);
        }
    }

    /// Checks several systems: a line for each and its findings, and the total.
    void checkAll() {
        Progress progress(console_, options_.files.size());
        for (const std::string& file : options_.files) {
            progress.show(++total_.files, file);
            try {
                const std::unique_ptr<systems::CheckedSystem> checked = readSystem(file);
                total_.add(countFindings(*checked, Severity::Error),
                           countFindings(*checked, Severity::Warning),
                           countFindings(*checked, Severity::Note));
                progress.clear();
                print(*checked, file, options_.report.isChosen && !options_.findings.isQuiet);
            } catch (const files::ReadError& error) {
                progress.clear();
                ++total_.unreadable;
                printUnreadable("check", file, error, options_.isJson, console_);
            }
        }
        if (options_.isJson) {
            output::printJson(output::envelope("check", {{"total", total_.json()}}), console_.out);
        } else if (!options_.findings.isQuiet) {
            output::printWrapped(total_.text(), 4, console_.out);
        }
    }

  private:
    std::unique_ptr<systems::CheckedSystem> readSystem(const std::string& file) const {
        std::unique_ptr<systems::CheckedSystem> checked = systems::checkSystem(file);
        if (!selection_.containsAll()) {
            checked->retain([this](findings::Code code) { return selection_.contains(code); });
        }
        return checked;
    }

    /// Writes the files that the call asks for, and prints the report of a system unless one is its
    /// page: with its sections, or only its summary and its findings.
    void print(const systems::CheckedSystem& checked, const std::string& file, bool hasSections) {
        raiseStatus(console_,
                    options_.findings.statusOf(countFindings(checked, Severity::Error),
                                               countFindings(checked, Severity::Warning)));
        if (!options_.graph.empty()) {
            const bool isDot = options_.graph.ends_with(dotEnding);
            writeFile(options_.graph, file,
                      isDot ? systemreport::dotText(checked) : systemreport::svgText(checked));
        }
        if (!options_.html.empty()) {
            return writeFile(options_.html, file, page::htmlPage({checked, file, options_.report}));
        }
        if (hasSections || options_.isJson) {
            const systemreport::Report report{checked, file, options_.report};
            return tvtool::print(report, options_.isJson, console_);
        }
        if (!options_.findings.isQuiet) {
            output::printWrapped(systemreport::summaryText(checked, file), 4, console_.out);
        }
        systemreport::printFindings(checked, options_.findings.showsAll, console_.colour,
                                    console_.out);
    }

    static void writeFile(const std::string& path, const std::string& input,
                          const std::string& text) {
        files::OutputFile output(path, input, files::InPlace::Refused);
        output.write(text.data(), text.size());
        output.commit();
    }

    const Options& options_;
    Console& console_;
    const findings::Selection selection_;
    Total total_;
};

void check(const Options& options, Console& console) {
    try {
        Checker checker(options, console);
        if (options.files.size() == 1) {
            checker.checkFile(options.files.front());
        } else {
            checker.checkAll();
        }
    } catch (const text::ParseError& error) {
        reportUnreadable(error, console);
    }
}

void checkFiles(const CLI::App& command, const Options& options) {
    checkExclusion(command, "--html", {"--json", "--quiet"});
    for (const char* const option : {"--html", "--graph"}) {
        if (command.count(option) > 0 && options.files.size() > 1) {
            throw UsageError(fmt::format("{} takes one FILE", option));
        }
    }
    if (command.count("--graph") > 0 && !options.graph.ends_with(svgEnding) &&
        !options.graph.ends_with(dotEnding)) {
        throw UsageError("--graph writes a file whose name ends with .svg or .dot");
    }
}

} // namespace
} // namespace checkCommand

void addCheck(CLI::App& app, Console& console) {
    using namespace checkCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "check", "Show what flows between the models of a system, and what is wrong with it");
    command
        .add_option("FILE", options->files,
                    "Systems in the SSP standard: .ssp archives, .ssd files, or directories that "
                    "contain SystemStructure.ssd")
        ->type_name(fileType("", {".ssp", ".ssd"}))
        ->required();
    CLI::Option* const choice = addChoice<ConnectionChoice>(
        command, "--connections", options->report.connections,
        "Which connections to list: all (the default), converted (those that change the value), "
        "findings (those with errors and warnings) or none",
        "CHOICE",
        {{"all", ConnectionChoice::All},
         {"converted", ConnectionChoice::Converted},
         {"findings", ConnectionChoice::Findings},
         {"none", ConnectionChoice::None}});
    addFindingOptions(command, options->findings);
    command
        .add_option("--graph", options->graph,
                    "Also draw the system into this file, as a picture or in the language of "
                    "Graphviz")
        ->type_name(fileType("OUT.svg|OUT.dot", {svgEnding, dotEnding}));
    command.add_flag("--json", options->isJson, "Print one JSON object for each file");
    command
        .add_option("--html", options->html,
                    "Write an HTML page with the picture and all tables into this file instead; - "
                    "is the standard output")
        ->type_name(fileType("OUT", {".html"}));
    command.footer("Several files get a line each, their findings and a total.\n"
                   "Exit status: 0 no errors, 1 errors in a system, 2 a file cannot be read or the "
                   "call is wrong.");
    command.callback([options, choice, &command, &console] {
        checkFiles(command, *options);
        options->report.isChosen = choice->count() > 0;
        options->report.showsAllFindings = options->findings.showsAll;
        check(*options, console);
    });
}

} // namespace tvtool
