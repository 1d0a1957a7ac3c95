// tvtypes inspect: reports the interface and the data types of a model, and what is wrong with it.
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "files/output_file.h"
#include "findings/selection.h"
#include "findings/text.h"
#include "fmi/description_files.h"
#include "output/failure.h"
#include "output/json.h"
#include "output/shortening.h"
#include "output/terminal.h"
#include "page/page.h"
#include "report/inspection.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

namespace {

using findings::Severity;
using report::VariableChoice;
using report::VariableOrder;

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> select;
    std::vector<std::string> ignore;
    std::string html; ///< path of the page; empty for none
    report::Options report;
    bool isQuiet = false;
    bool isStrict = false;
    bool isJson = false;
    bool listsVariables = false; ///< whether the call says which variables to list
};

/// The sums over several files.
struct Total {
    std::size_t files = 0;
    std::size_t unreadable = 0;
    std::size_t withErrors = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;

    void add(const findings::Findings& found) {
        withErrors += found.count(Severity::Error) > 0 ? 1 : 0;
        errors += found.count(Severity::Error);
        warnings += found.count(Severity::Warning);
        notes += found.count(Severity::Note);
    }

    std::string text() const {
        return fmt::format("{}: {} with errors, {} unreadable; {}",
                           text::counted(files, "file", "files"), withErrors, unreadable,
                           findings::countsText(errors, warnings, notes));
    }

    boost::json::object json() const {
        return {{"files", files},   {"unreadable", unreadable}, {"withErrors", withErrors},
                {"errors", errors}, {"warnings", warnings},     {"notes", notes}};
    }
};

/// The last file that is being read, in a line of the terminal that is overwritten.
class Progress {
  public:
    Progress(const Console& console, std::size_t files) : os_(console.err), files_(files) {
        isShown_ = console.errIsTerminal && files > 1;
    }
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::size_t number, const std::string& file) {
        if (isShown_) {
            constexpr std::size_t widest = 60;
            const std::string name = output::shortenedInTheMiddle(text::safeText(file), widest);
            os_ << fmt::format("\r\x1b[K[{}/{}] {}", number, files_, name) << std::flush;
        }
    }
    void clear() {
        if (isShown_) {
            os_ << "\r\x1b[K" << std::flush;
        }
    }

  private:
    std::ostream& os_;
    std::size_t files_;
    bool isShown_;
};

void raiseStatus(Console& console, int status) {
    console.status = std::max(console.status, status);
}

class Inspector {
  public:
    Inspector(const Options& options, Console& console)
        : options_(options),
          console_(console),
          selection_(options.select, options.ignore),
          printer_({console.colour, options.report.showsAllFindings}, console.out) {}

    void inspectFile(const std::string& file) {
        try {
            print(*readModel(file), file, !options_.isQuiet);
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
                total_.add(model->findings);
                progress.clear();
                print(*model, file.path, options_.listsVariables && !options_.isQuiet);
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
        const bool fails = found.count(Severity::Error) > 0 ||
                           (options_.isStrict && found.count(Severity::Warning) > 0);
        raiseStatus(console_, fails ? ExitProblems : ExitClean);
        if (!options_.html.empty()) {
            writePage(model, file);
            return;
        }
        if (hasSections || options_.isJson) {
            const report::Inspection inspection(model, file, options_.report);
            tvtool::print(inspection, options_.isJson, console_);
            return;
        }
        if (!options_.isQuiet) {
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
        raiseStatus(console_, ExitUnusable);
        if (options_.isJson) {
            output::printJson(
                output::envelope("inspect",
                                 {{"error", output::failureObject(
                                                {error.what(), file, error.line, error.column})}}),
                console_.out);
        } else {
            findings::printError(file, error.line, error.column, error.what(), console_.colour,
                                 console_.out);
        }
    }

    void printTotal() {
        if (options_.isJson) {
            output::printJson(output::envelope("inspect", {{"total", total_.json()}}),
                              console_.out);
        } else if (!options_.isQuiet) {
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
    command
        .add_option("--variables", options.report.variables,
                    "Which variables to list: interface (inputs, outputs and parameters; the "
                    "default), all or none")
        ->type_name("CHOICE")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, VariableChoice>{{"all", VariableChoice::All},
                                                  {"interface", VariableChoice::Interface},
                                                  {"none", VariableChoice::None}}));
    command
        .add_option("--filter", options.report.filters,
                    "List the variables whose names match a pattern with *, ? and [...]")
        ->type_name("GLOB")
        ->allow_extra_args(false);
    command
        .add_option("--sort", options.report.order,
                    "Order of the variables: line (of the description; the default), name, type "
                    "or unit")
        ->type_name("KEY")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, VariableOrder>{{"line", VariableOrder::Line},
                                                 {"name", VariableOrder::Name},
                                                 {"type", VariableOrder::Type},
                                                 {"unit", VariableOrder::Unit}}));
    command.add_flag("--ids", options.report.showsIds, "Show the ids that the library assigns");
}

void addFindings(CLI::App& command, Options& options) {
    command
        .add_option("--select", options.select,
                    "Report only findings with these codes: patterns, separated by commas")
        ->type_name("GLOB")
        ->allow_extra_args(false);
    command.add_option("--ignore", options.ignore, "Do not report findings with these codes")
        ->type_name("GLOB")
        ->allow_extra_args(false);
    command.add_flag("--quiet", options.isQuiet, "Print the findings only");
    command.add_flag("--strict", options.isStrict, "Exit with 1 for warnings too");
    command.add_flag("--all", options.report.showsAllFindings,
                     "Print each finding, however many there are");
}

} // namespace

void addInspect(CLI::App& app, Console& console) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        *app.add_subcommand("inspect", "Show the interface and the data types of a model, and what "
                                       "is wrong with its description");
    command
        .add_option("FILE", options->files,
                    "Descriptions (modelDescription.xml in FMI 2 or 3), .fmu archives, directories "
                    "that contain them, or - for standard input")
        ->type_name("")
        ->required();
    addListing(command, *options);
    addFindings(command, *options);
    command.add_flag("--json", options->isJson, "Print one JSON object for each file");
    command
        .add_option("--html", options->html,
                    "Write an HTML page with all variables into this file instead; - is the "
                    "standard output")
        ->type_name("OUT");
    command.footer("Several files, or a directory, get a line each, their findings and a total.\n"
                   "Exit status: 0 no errors, 1 errors in a model, 2 a file cannot be read or the "
                   "call is wrong.");
    command.callback([options, &command, &console] {
        checkExclusion(command, "--html", {"--json", "--quiet"});
        options->listsVariables = command.count("--variables") + command.count("--filter") > 0;
        inspect(*options, console);
    });
}

} // namespace tvtool
