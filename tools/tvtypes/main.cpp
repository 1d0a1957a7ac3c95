#include "files/temporary_file.h"
#include "output/terminal.h"
#include "tool.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Opens closed standard descriptors for the wrong direction, so that their use is an error and no
/// other file gets their numbers.
void reserveStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

/// Ends the process when memory runs out. The exception is not enough, because streams and the
/// loading of the unit database catch std::bad_alloc.
[[noreturn]] void endWithoutMemory() {
    tvtool::files::removeTemporaryFile();
    const std::string_view line = tvtool::memoryLine;
    [[maybe_unused]] const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
    _exit(tvtool::ExitUnusable);
}

} // namespace

int main(int argc, char** argv) {
    reserveStandardDescriptors();
    std::set_new_handler(endWithoutMemory);
    // Makes a write beyond the limit on the size of files fail, instead of ending the process.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    // When synchronised with C's, the standard input treats an error as the end.
    std::ios::sync_with_stdio(false);
    const bool colour = std::getenv("NO_COLOR") == nullptr && isatty(STDOUT_FILENO) == 1;
    const bool errIsTerminal = isatty(STDERR_FILENO) == 1;
    return tvtool::runTool(argc, argv,
                           {std::cin, std::cout, std::cerr, colour, errIsTerminal,
                            tvtool::output::lineWidthOf(STDOUT_FILENO)});
}
