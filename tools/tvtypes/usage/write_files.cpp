// Writes the manual pages and the completions of shells into a folder: usage_files FOLDER
#include "commands/definition.h"
#include "usage/manual.h"
#include "usage/scripts.h"

#include <tvtypes/functions.h>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

/// Returns the date that a reproducible build has for its files; empty without one.
std::string buildDate() {
    const char* const seconds = std::getenv("SOURCE_DATE_EPOCH");
    if (seconds == nullptr) {
        return "";
    }
    return fmt::format("{:%Y-%m-%d}", fmt::gmtime(static_cast<std::time_t>(std::stoll(seconds))));
}

void write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file << text << std::flush;
}

} // namespace

int main(int argc, char** argv) {
    using namespace tvtool::usage;
    if (argc != 2) {
        std::cerr << "usage: usage_files FOLDER\n";
        return 2;
    }
    try {
        const std::filesystem::path folder(argv[1]);
        std::filesystem::create_directories(folder / "man1");
        const Tool tool = tvtool::toolDefinition();
        for (const PageFile& page : manualPages(tool, buildDate(), libtv_types_version)) {
            write(folder / "man1" / page.name, page.text);
        }
        write(folder / "tvtypes.bash", bashScript(tool));
        write(folder / "tvtypes.zsh", zshScript(tool));
        write(folder / "tvtypes.fish", fishScript(tool));
    } catch (const std::exception& error) {
        std::cerr << "usage_files: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
