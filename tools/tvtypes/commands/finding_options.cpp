#include "commands/finding_options.h"

#include "commands/argument_type.h"
#include "findings/rules.h"
#include "findings/text.h"
#include "output/failure.h"
#include "output/json.h"
#include "output/shortening.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>

namespace tvtool {

void addFindingOptions(CLI::App& command, FindingOptions& options) {
    std::vector<std::string> names;
    for (const findings::Rule& rule : findings::rules()) {
        names.emplace_back(rule.name);
    }
    const std::string codes = choiceType("GLOB", names);
    command
        .add_option("--select", options.select,
                    "Report only findings with these codes: patterns, separated by commas")
        ->type_name(codes)
        ->allow_extra_args(false);
    command.add_option("--ignore", options.ignore, "Do not report findings with these codes")
        ->type_name(codes)
        ->allow_extra_args(false);
    command.add_flag("--quiet", options.isQuiet, "Print the findings only");
    command.add_flag("--strict", options.isStrict, "Exit with 1 for warnings too");
    command.add_flag("--all", options.showsAll, "Print each finding, however many there are");
}

void Total::add(std::size_t addedErrors, std::size_t addedWarnings, std::size_t addedNotes) {
    withErrors += addedErrors > 0 ? 1 : 0;
    errors += addedErrors;
    warnings += addedWarnings;
    notes += addedNotes;
}

std::string Total::text() const {
    return fmt::format("{}: {} with errors, {} unreadable; {}",
                       text::counted(files, "file", "files"), withErrors, unreadable,
                       findings::countsText(errors, warnings, notes));
}

boost::json::object Total::json() const {
    return {{"files", files},   {"unreadable", unreadable}, {"withErrors", withErrors},
            {"errors", errors}, {"warnings", warnings},     {"notes", notes}};
}

Progress::Progress(const Console& console, std::size_t files)
    : os_(console.err), files_(files), isShown_(console.errIsTerminal && files > 1) {}

void Progress::show(std::size_t number, const std::string& file) {
    if (isShown_) {
        constexpr std::size_t widest = 60;
        const std::string name = output::shortenedInTheMiddle(text::safeText(file), widest);
        os_ << fmt::format("\r\x1b[K[{}/{}] {}", number, files_, name) << std::flush;
    }
}

void Progress::clear() {
    if (isShown_) {
        os_ << "\r\x1b[K" << std::flush;
    }
}

void raiseStatus(Console& console, int status) {
    console.status = std::max(console.status, status);
}

void printUnreadable(const char* command, const std::string& file, const files::ReadError& error,
                     bool isJson, Console& console) {
    raiseStatus(console, ExitUnusable);
    if (isJson) {
        const output::Failure failure{error.what(), file, error.line, error.column};
        output::printJson(output::envelope(command, {{"error", output::failureObject(failure)}}),
                          console.out);
    } else {
        findings::printError(file, error.line, error.column, error.what(), console.colour,
                             console.out);
    }
}

} // namespace tvtool
