#include "usage/manual.h"

#include "usage/roff.h"

#include <fmt/format.h>

#include <sstream>

namespace tvtool::usage {

namespace {

/// The parts of a footer, which stand in sections of their own.
struct Footer {
    struct Block {
        std::string text;
        bool isLiteral = false;
    };
    std::vector<Block> description;
    std::string examples; ///< lines
    std::string exitStatus;
};

constexpr std::string_view statusBeginning = "Exit status: ";

/// Adds a block to the part that it belongs to: lines with calls of the tool are examples.
void addBlock(const Footer::Block& block, Footer& footer) {
    if (block.text.empty()) {
        return;
    }
    if (block.isLiteral && block.text.find("tvtypes ") != std::string::npos) {
        footer.examples += block.text;
    } else if (block.text.starts_with(statusBeginning)) {
        footer.exitStatus = block.text.substr(statusBeginning.size());
    } else {
        footer.description.push_back(block);
    }
}

Footer parseFooter(const std::string& text) {
    constexpr std::size_t indent = 2;
    Footer footer;
    Footer::Block block;
    const auto begin = [&](bool isLiteral) {
        addBlock(block, footer);
        block = {"", isLiteral};
    };
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) {
            begin(false);
        } else if (const bool isLiteral = line.front() == ' '; isLiteral) {
            if (!block.isLiteral) {
                begin(true);
            }
            block.text += line.substr(indent) + '\n';
        } else {
            if (block.isLiteral || line.starts_with(statusBeginning)) {
                begin(false);
            }
            block.text += (block.text.empty() ? "" : " ") + line;
        }
    }
    begin(false);
    return footer;
}

/// Adds the meaning of each status: "0 clean, 1 errors" are two.
void addExitStatus(const std::string& text, ManualPage& page) {
    constexpr int highest = 2;
    std::string rest = text;
    if (rest.ends_with('.')) {
        rest.pop_back();
    }
    while (rest.size() > 2) {
        std::size_t end = std::string::npos;
        for (int status = rest.front() - '0' + 1; status <= highest && end == std::string::npos;
             ++status) {
            for (const char separator : {',', ';'}) {
                end = std::min(end, rest.find(fmt::format("{} {} ", separator, status)));
            }
        }
        page.item(bold(rest.substr(0, 1)),
                  rest.substr(2, end == std::string::npos ? end : end - 2));
        rest = end == std::string::npos ? "" : rest.substr(end + 2);
    }
}

/// Returns the term of an option: its names and its argument.
std::string termOf(const Option& option) {
    std::string term;
    for (const std::string& name : option.names) {
        term += (term.empty() ? "" : ", ") + bold(name);
    }
    if (option.takesArgument()) {
        term += (term.empty() ? "" : " ") + italic(option.argument.name);
    }
    return term + (option.isRepeated ? " ..." : "");
}

void addOptions(const Command& command, ManualPage& page) {
    page.section("OPTIONS");
    std::string group = "Options";
    for (const Option& option : command.options) {
        if (option.group != group) {
            group = option.group;
            page.subsection(group);
        }
        page.item(termOf(option), option.description);
    }
}

void addSynopsis(const std::string& call, const Command& command, ManualPage& page) {
    page.section("SYNOPSIS");
    std::string line = bold(call) + " [" + italic("OPTION") + "]...";
    for (const Option& positional : command.positionals) {
        const std::string name =
            italic(positional.argument.name) + (positional.isRepeated ? "..." : "");
        line += positional.isRequired ? " " + name : " [" + name + "]";
    }
    page.line(line);
}

/// Adds the name of a page and what it is about, which begins with a small letter there.
void addName(const std::string& name, std::string about, ManualPage& page) {
    if (about.ends_with('.')) {
        about.pop_back();
    }
    about.front() = static_cast<char>(about.front() | 0x20);
    page.section("NAME");
    page.line(roffText(name) + " \\- " + roffText(about));
}

std::string reference(const std::string& name) { return bold(name) + "(1)"; }

void addDescription(const Command& command, const Footer& footer, ManualPage& page) {
    page.section("DESCRIPTION");
    page.paragraph(command.description + (command.description.ends_with('.') ? "" : "."));
    for (const Footer::Block& block : footer.description) {
        if (block.isLiteral) {
            page.literal(block.text);
        } else {
            page.paragraph(block.text);
        }
    }
}

std::string commandPage(const std::string& tool, const Command& command, ManualPage page) {
    const Footer footer = parseFooter(command.footer);
    addName(tool + "-" + command.name, command.description, page);
    addSynopsis(tool + " " + command.name, command, page);
    addDescription(command, footer, page);
    if (!command.positionals.empty()) {
        page.section("ARGUMENTS");
        for (const Option& positional : command.positionals) {
            page.item(termOf(positional), positional.description);
        }
    }
    addOptions(command, page);
    if (!footer.examples.empty()) {
        page.section("EXAMPLES");
        page.literal(footer.examples);
    }
    page.section("EXIT STATUS");
    addExitStatus(footer.exitStatus, page);
    page.section("SEE ALSO");
    page.line(reference(tool));
    return page.text();
}

std::string toolPage(const Tool& tool, ManualPage page) {
    const std::string& name = tool.call.name;
    addName(name, tool.call.description, page);
    addSynopsis(name, tool.call, page);
    addDescription(tool.call, parseFooter(tool.call.footer), page);
    page.section("COMMANDS");
    for (const Command& command : tool.commands) {
        page.item(bold(command.name), command.description + ".");
    }
    addOptions(tool.call, page);
    page.section("EXIT STATUS");
    addExitStatus("0 there are no problems, 1 there are errors in a model or a system, or values "
                  "have changed although that was excluded, 2 a file cannot be read or the call is "
                  "wrong",
                  page);
    page.section("ENVIRONMENT");
    page.item(bold("NO_COLOR"), "If it is set, the output has no colours.");
    page.item(bold("COLUMNS"), "The width of the lines on a terminal.");
    page.section("FILES");
    page.paragraph("Below the directory in which the tool is installed:");
    page.item(italic("share/tvtypes/toolbox/torvane/torvane_foundation/unitdatabase.oxd"),
              "The unit database. Beside it, unitdefinitions.oxd has the exact definitions.");
    page.item(italic("share/tvtypes/schema/"),
              "The schemas of the objects that are printed with --json.");
    page.section("SEE ALSO");
    std::string references;
    for (const Command& command : tool.commands) {
        if (!command.options.empty()) {
            references += (references.empty() ? "" : ",\n") + reference(name + "-" + command.name);
        }
    }
    page.line(references);
    return page.text();
}

} // namespace

std::vector<PageFile> manualPages(const Tool& tool, std::string_view date,
                                  std::string_view version) {
    const std::string source = fmt::format("{} {}", tool.call.name, version);
    const auto pageOf = [&](const std::string& name) { return ManualPage(name, date, source); };
    std::vector<PageFile> files{{tool.call.name + ".1", toolPage(tool, pageOf(tool.call.name))}};
    for (const Command& command : tool.commands) {
        if (!command.options.empty()) {
            const std::string name = tool.call.name + "-" + command.name;
            files.push_back({name + ".1", commandPage(tool.call.name, command, pageOf(name))});
        }
    }
    return files;
}

} // namespace tvtool::usage
