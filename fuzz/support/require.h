/// \file
/// The assertion of the fuzzers.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzzing {

/// Aborts with the place of the call if a condition does not hold.
inline void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "%s:%d: requirement failed\n", file, line);
        std::abort();
    }
}

} // namespace fuzzing
