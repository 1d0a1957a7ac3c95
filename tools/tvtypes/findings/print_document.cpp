// Prints docs/findings.md.
#include "findings/rules.h"

#include <iostream>

int main() { std::cout << tvtool::findings::rulesDocument(); }
