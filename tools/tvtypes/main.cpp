#include "tool.h"

#include <cstdlib>
#include <iostream>

#include <unistd.h>

int main(int argc, char** argv) {
    const bool colour = std::getenv("NO_COLOR") == nullptr && isatty(STDOUT_FILENO) == 1;
    const bool errIsTerminal = isatty(STDERR_FILENO) == 1;
    return tvtool::runTool(argc, argv, {std::cin, std::cout, std::cerr, colour, errIsTerminal});
}
