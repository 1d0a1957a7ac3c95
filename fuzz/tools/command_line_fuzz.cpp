// The whole tool: lines of text as its arguments, and the rest as standard input and as the file f
// in the current folder, which is a temporary one. Every call ends with a status, an error has a
// sentence, output is safe to print, JSON is valid, and no temporary file stays.
#include "tool.h"

#include <boost/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

struct TemporaryFolder {
    TemporaryFolder() { fs::create_directories(path); }
    ~TemporaryFolder() { fs::remove_all(path); }

    const fs::path path = fs::temp_directory_path() / ("tvtypes_fuzz_" + std::to_string(getpid()));
};

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

/// Splits the arguments, which end at an empty line. They name no file outside the folder.
std::vector<std::string> takeArguments(std::istream& is) {
    constexpr std::size_t most = 40;
    std::vector<std::string> arguments{"tvtypes"};
    for (std::string line; arguments.size() < most && std::getline(is, line) && !line.empty();) {
        line.resize(std::min(line.find('\0'), line.size()));
        arguments.push_back(line);
    }
    const bool writes = std::ranges::any_of(arguments, [](const std::string& argument) {
        return argument.find("--out") != std::string::npos ||
               argument.find("--svg") != std::string::npos;
    });
    const bool readsFiles = arguments.size() > 1 && arguments[1] != "unit" &&
                            arguments[1] != "dims" && arguments[1] != "fixpt";
    for (std::string& argument : arguments) {
        if (writes || readsFiles || argument.find("--facts") != std::string::npos) {
            std::erase(argument, '/');
        }
    }
    return arguments;
}

bool isSafe(const std::string& text) {
    return std::ranges::none_of(text, [](char c) {
        return (static_cast<unsigned char>(c) < ' ' && c != '\n') || c == '\x7f';
    });
}

void checkOutcome(const std::vector<std::string>& arguments, int status, const std::string& out,
                  const std::string& err) {
    require(status >= tvtool::ExitClean && status <= tvtool::ExitUnusable);
    require(status != tvtool::ExitUnusable || err.find("tvtypes: ") != std::string::npos);
    require(isSafe(out) && isSafe(err));
    if (std::ranges::count(arguments, "--json") == 1 && out.starts_with('{')) {
        static_cast<void>(boost::json::parse(out)); // throws
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
        require(entry.path().extension() != ".part");
        if (entry.path().filename() != "f") {
            fs::remove_all(entry.path());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    const CurrentFolder current(folder.path);
    std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
    const std::vector<std::string> arguments = takeArguments(text);
    const std::string rest(std::istreambuf_iterator<char>(text), {});
    std::ofstream("f", std::ios::binary) << rest;
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    std::istringstream in(rest);
    std::ostringstream out;
    std::ostringstream err;
    const int status = tvtool::runTool(static_cast<int>(argv.size()), argv.data(), {in, out, err});
    checkOutcome(arguments, status, out.str(), err.str());
    return 0;
}
