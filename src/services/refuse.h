/// \file
/// Former names of the functions of services/errors.h.
#pragma once

#include "services/errors.h"

namespace TVTypeSys {

[[noreturn]] inline void refuse(const msgcore::BaseMsgID& message) { throwError(message); }
[[noreturn]] inline void refuse(tvsvDiagnosticImpl* diagnostic) { throwError(diagnostic); }
[[noreturn]] inline void refuseForLackOfMemory() { throwOutOfMemory(); }
inline void warn(const msgcore::BaseMsgID& message) { reportWarning(message); }
inline std::string textOf(const char* text) { return orEmpty(text); }

} // namespace TVTypeSys
