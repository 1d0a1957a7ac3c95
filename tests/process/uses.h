// Uses of the subsystems that reach all state of the process: templates of types, catalogue of
// messages, cached texts, unit database. Each writes its results, which are always the same.
#pragma once

#include <ostream>

struct Use {
    const char* name;
    void (*run)(std::ostream& out);
};

// The parameter of a test.
inline void PrintTo(const Use& use, std::ostream* out) { *out << use.name; }

extern const Use uses[4];
