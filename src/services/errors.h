/// \file
/// Throws errors and reports warnings, with the messages of the catalogue.
#pragma once

#include <tv_services/diagnostics.h>
#include <tvtypes_res/messages.h>

#include <string>

namespace TVTypeSys {

namespace general = TorvaneTypes::general;
namespace units = TorvaneTypes::Unit;
namespace dimensions = TorvaneTypes::Dimensions;

/// Throws a message as a fnd::except::IException: `throwError(general::InvalidDataTypeId(id))`.
[[noreturn]] void throwError(const msgcore::BaseMsgID& message);

/// Throws a diagnostic and takes ownership of it. Inline, since each frame makes unwinding slower.
[[noreturn]] inline void throwError(tvsvDiagnosticImpl* diagnostic) {
    tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
}

/// Returns the diagnostic of a message, which the caller owns.
tvsvDiagnosticImpl* createDiagnostic(const msgcore::BaseMsgID& message);

/// Throws the host's diagnostic for a failed allocation.
[[noreturn]] void throwOutOfMemory();

/// Reports a message as a warning.
void reportWarning(const msgcore::BaseMsgID& message);

/// Returns a text as a message argument, with "" for null.
inline std::string orEmpty(const char* text) { return text == nullptr ? std::string() : text; }

} // namespace TVTypeSys
