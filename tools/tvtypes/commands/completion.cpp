// tvtypes completion: the scripts by which shells complete calls of the tool.
#include "commands/argument_type.h"
#include "commands/commands.h"
#include "commands/definition.h"
#include "convert/names.h"
#include "units/search.h"
#include "usage/scripts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <exception>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace tvtool {

namespace completionCommand {
namespace {

using usage::Offer;

struct Options {
    std::string subject;
    std::string prefix;
};

constexpr const char* footer =
    "The scripts are installed with the tool. For a tool that is not installed:\n"
    "\n"
    "  source <(tvtypes completion bash)\n"
    "  tvtypes completion zsh >~/.zfunc/_tvtypes\n"
    "  tvtypes completion fish >~/.config/fish/completions/tvtypes.fish\n"
    "\n"
    "zsh finds the script in a directory of its variable fpath, here ~/.zfunc, before compinit is\n"
    "called.\n"
    "\n"
    "The scripts call the tool for what only the unit database has: with units, quantities or\n"
    "systems in the place of the shell it prints those that begin with PREFIX, one a line, with a\n"
    "description behind a tab. In a product, the last name is completed. No error is printed.\n"
    "\n"
    "Exit status: 0 printed, 2 the call is wrong.";

struct Script {
    const char* name;
    std::string (*text)(const usage::Tool& tool);
};
constexpr Script scripts[] = {
    {"bash", usage::bashScript}, {"zsh", usage::zshScript}, {"fish", usage::fishScript}};

/// Prints the units that begin with a prefix, with `head` before each.
void listUnits(const std::string& head, const std::string& prefix, std::set<std::string>& listed,
               std::ostream& os) {
    for (const units::UnitWord& each : units::completions(prefix)) {
        if (std::string word = head + each.word; listed.insert(word).second) {
            const std::string about = each.unit == each.word ? each.quantity : each.unit;
            os << fmt::format("{}\t{}\n", word, about);
        }
    }
}

/// Prints the units of the database that begin with a text, which may be a product of units, of
/// which the last name is completed.
void listUnits(const std::string& text, std::ostream& os) {
    std::set<std::string> listed;
    listUnits("", text, listed, os);
    const std::size_t last = text.find_last_of("*/(") + 1;
    if (last > 0 && last < text.size()) {
        listUnits(text.substr(0, last), text.substr(last), listed, os);
    }
}

void list(Offer offer, const std::string& prefix, std::ostream& os) {
    if (offer == Offer::Units) {
        return listUnits(prefix, os);
    }
    std::set<std::string> words;
    for (const units::UnitLine& unit : units::unitsOf("", "")) {
        if (offer == Offer::Systems) {
            words.insert(unit.systems.begin(), unit.systems.end());
        } else {
            words.insert(unit.quantity);
        }
    }
    for (const std::string& word : words) {
        if (!word.empty() && word.starts_with(prefix)) {
            os << word << '\n';
        }
    }
}

void complete(const CLI::App& app, const Options& options, Console& console) {
    for (const Script& script : scripts) {
        if (options.subject == script.name) {
            console.out << script.text(definitionsIn(app));
            return;
        }
    }
    const Offer offer = usage::offerNamed(options.subject);
    if (offer != Offer::Units && offer != Offer::Quantities && offer != Offer::Systems) {
        throw text::choiceError("SHELL", options.subject, "bash, zsh or fish",
                                {"bash", "zsh", "fish"});
    }
    try {
        list(offer, options.prefix, console.out);
    } catch (const std::exception&) {
        // A message would appear in the line that is being typed.
        console.status = ExitUnusable;
    }
}

} // namespace
} // namespace completionCommand

void addCompletion(CLI::App& app, Console& console) {
    using namespace completionCommand;
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand(
        "completion", "Print the script by which a shell completes calls of the tool");
    command.add_option("SHELL", options->subject, "bash, zsh or fish")
        ->type_name(choiceType("", convert::namesOf(scripts)))
        ->required();
    command
        .add_option("PREFIX", options->prefix, "With units, quantities or systems: their beginning")
        ->type_name("")
        ->transform(withoutBlank);
    command.footer(footer);
    command.callback([&app, options, &console] { complete(app, *options, console); });
}

} // namespace tvtool
