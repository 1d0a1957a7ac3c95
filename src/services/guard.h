/// \file
/// Refusals as diagnostics, for callers that do not work with exceptions.
#pragma once

#include <fnd/except.h>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// The diagnostic of a refusal, with the block that asked added if its path is known. The caller
/// owns it.
tvsvDiagnosticImpl* diagnosticOf(const fnd::except::IException& refusal, const char* blockPath);

/// Runs `operation` and gives null, or the diagnostic of its refusal. Other exceptions pass.
template <class Operation>
tvsvDiagnosticImpl* guarded(const char* blockPath, const Operation& operation) {
    try {
        operation();
        return nullptr;
    } catch (const fnd::except::IException& refusal) {
        return diagnosticOf(refusal, blockPath);
    }
}

/// Destroys a diagnostic that nobody wants.
void discard(tvsvDiagnosticImpl* diagnostic);

/// Runs `operation` and tells whether it was done and not refused. Other exceptions pass.
template <class Operation>
bool succeeds(const Operation& operation) {
    if (tvsvDiagnosticImpl* diagnostic = guarded(nullptr, operation)) {
        discard(diagnostic);
        return false;
    }
    return true;
}

} // namespace TVTypeSys
