// The whole tool: lines of text as its arguments, and the rest as standard input and as files in
// the current folder, which is a temporary one. Every call ends with a status, an error has a
// sentence, output is safe to print, JSON is valid, and no temporary file stays.
//
// What follows the first empty line is standard input and the file `f`, up to a line that names a
// further file (support/sections.h).
#include "support/folder.h"
#include "support/output.h"
#include "support/sections.h"
#include "tool.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace fuzzing;

/// Makes a folder the current one during its life; the corpus may have a relative path.
class CurrentFolder {
  public:
    explicit CurrentFolder(const fs::path& folder) { fs::current_path(folder); }
    ~CurrentFolder() { fs::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    const fs::path before_ = fs::current_path();
};

/// Makes arguments name no file outside the folder, and no picture of a system: that one is drawn
/// in a child process, whose end the fuzzer would report.
void restrict(std::vector<std::string>& arguments) {
    const auto isGiven = [&](std::string_view part) {
        return std::ranges::any_of(arguments, [&](const std::string& argument) {
            return argument.find(part) != std::string::npos;
        });
    };
    const bool readsFiles = arguments.size() > 1 && arguments[1] != "unit" &&
                            arguments[1] != "dims" && arguments[1] != "fixpt";
    const bool hasPaths = readsFiles || isGiven("--out") || isGiven("--svg") || isGiven("--html") ||
                          isGiven("--graph") || isGiven("--facts");
    for (std::string& argument : arguments) {
        if (hasPaths) {
            std::erase(argument, '/');
        }
        if (isGiven("check") && (argument.starts_with("--html") || argument.ends_with(".svg"))) {
            argument = "--json";
        }
    }
}

/// Takes the arguments from the input.
std::vector<std::string> takeArguments(std::string_view& text) {
    constexpr std::size_t most = 40;
    std::vector<std::string> arguments{"tvtypes"};
    while (arguments.size() < most && !text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.empty()) {
            break;
        }
        arguments.emplace_back(line.substr(0, line.find('\0')));
    }
    restrict(arguments);
    return arguments;
}

void checkOutcome(const std::vector<std::string>& arguments, int status, const std::string& out,
                  const std::string& err) {
    require(status >= tvtool::ExitClean && status <= tvtool::ExitUnusable);
    // Without arguments, the help is the error. Of several files, errors are in the report.
    require(status != tvtool::ExitUnusable || arguments.size() == 1 ||
            err.find("tvtypes: ") != std::string::npos ||
            (out + err).find("error") != std::string::npos);
    checkText(out);
    checkText(err);
    // Several files give one object each.
    if (std::ranges::count(arguments, "--json") == 1 && out.starts_with('{')) {
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            checkJson(line);
        }
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
        require(entry.path().extension() != ".part");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    const CurrentFolder current(folder.path);
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> arguments = takeArguments(text);
    std::vector<Section> sections = splitSections(text);
    sections.front().name = "f";
    writeSections(sections, ".");
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    std::istringstream in(sections.front().content);
    std::ostringstream out;
    std::ostringstream err;
    const int status = tvtool::runTool(static_cast<int>(argv.size()), argv.data(), {in, out, err});
    checkOutcome(arguments, status, out.str(), err.str());
    folder.clear();
    return 0;
}
