// Uses of the subsystems that reach all state of the process: templates of types, catalogue of
// messages, cached texts, unit database. Each writes its results, which are always the same.
#pragma once

#include <iosfwd>

void useTypes(std::ostream& out);
void useFixedPointTexts(std::ostream& out);
void useUnits(std::ostream& out);
void useSymbolicDims(std::ostream& out);
