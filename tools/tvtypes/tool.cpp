#include "tool.h"

#include "commands/call.h"
#include "commands/commands.h"
#include "commands/usage_error.h"
#include "files/file_error.h"
#include "output/json.h"
#include "output/terminal.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <exception>
#include <new>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace tvtool {

namespace {

std::string errorLine(std::string_view sentence, const std::string& hint = {}) {
    return fmt::format("tvtypes: {}{}\n", text::safeText(text::inOneLine(std::string(sentence))),
                       hint);
}

/// Returns the sentence for a call that the command line library has rejected.
std::string rejectionSentence(const CLI::ParseError& error, const CLI::App& app) {
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        std::string name = error.what();
        if (const std::size_t end = name.find(" is required"); end != std::string::npos) {
            name.resize(end);
        }
        return name + " is missing";
    }
    if (const std::vector<std::string> extras = app.remaining(true);
        dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !extras.empty()) {
        return fmt::format("there is one argument too many: {}", text::quoted(extras.front()));
    }
    return error.what();
}

/// Runs a call and reports its errors.
void execute(CLI::App& app, const Call& call, Console& console) {
    const std::string command = call.command(app);
    const std::string hint = fmt::format(" (tvtypes{} --help shows how to call it)",
                                         command.empty() ? "" : " " + command);
    try {
        call.check(app);
        app.parse(call.parserArguments());
    } catch (const CLI::Success& request) {
        app.exit(request, console.out, console.err);
    } catch (const CLI::ParseError& error) {
        const std::string sentence = rejectionSentence(error, app);
        console.fail({.sentence = sentence}, errorLine(sentence, hint));
    } catch (const UsageError& error) {
        console.fail(
            {.sentence = error.what(), .text = error.argument, .suggestion = error.suggestion},
            errorLine(error.what(), hint));
    } catch (const text::ArgumentError& error) {
        console.fail(
            {.sentence = error.what(), .text = error.argument, .suggestion = error.suggestion},
            errorLine(error.what()));
    } catch (const files::FileError& error) {
        console.fail({.sentence = error.sentence, .file = error.file}, errorLine(error.what()));
    } catch (const std::bad_alloc&) {
        console.fail({.sentence = "there is not enough memory"}, memoryLine);
    } catch (const std::exception& error) {
        console.fail({.sentence = error.what()}, errorLine(error.what()));
    }
    if (console.failure && call.hasJson()) {
        output::printJson(
            output::envelope(command, {{"error", output::failureObject(*console.failure)}}),
            console.out);
    }
}

} // namespace

int runTool(int argc, const char* const* argv, const Streams& streams) {
    Console console{streams};
    output::setLineWidth(streams.out, streams.width);
    try {
        CLI::App app;
        addCommands(app, console);
        const Call call({argv + 1, argv + argc});
        if (call.isEmpty()) {
            console.fail({}, app.help());
        } else {
            execute(app, call, console);
        }
        if (!console.out.flush() && !console.failure) {
            console.err << "tvtypes: the output cannot be written\n";
            console.status = ExitUnusable;
        }
    } catch (const std::bad_alloc&) {
        console.err << memoryLine;
        console.status = ExitUnusable;
    } catch (const std::exception& error) {
        console.err << errorLine(error.what());
        console.status = ExitUnusable;
    }
    return console.status;
}

} // namespace tvtool
