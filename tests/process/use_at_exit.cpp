// Uses the library in the destructor of a static object and in a function for atexit. Both run
// after the destruction of all objects that the library has made on first use.
#include "process/uses.h"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

namespace {

std::string results() {
    std::ostringstream out;
    for (const Use& use : uses) {
        use.run(out);
    }
    return out.str();
}

// The results of main. Not destroyed, since it is read until the process ends.
const std::string* first = nullptr;

void compareResults() {
    if (first == nullptr || *first != results()) {
        std::cerr << "other results at exit\n";
        std::_Exit(EXIT_FAILURE);
    }
}

struct AtExit {
    AtExit() { std::atexit(compareResults); }
    ~AtExit() { compareResults(); }
} atExit;

} // namespace

int main() { first = new std::string(results()); }
