/// \file
/// Conversion of thrown errors to diagnostics and status values.
#pragma once

#include <fnd/except.h>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// Creates the diagnostic of an error, with DataTypeErrorFromBlock (blockPath) appended unless
/// `blockPath` is null or empty. The caller owns it.
tvsvDiagnosticImpl* createDiagnostic(const fnd::except::IException& error, const char* blockPath);

/// Destroys a diagnostic.
void discard(tvsvDiagnosticImpl* diagnostic);

/// Runs `operation`. Returns null, or the diagnostic of the IException that it threw, which the
/// caller owns. Other exceptions pass through.
template <class Operation>
tvsvDiagnosticImpl* guarded(const char* blockPath, const Operation& operation) {
    try {
        operation();
        return nullptr;
    } catch (const fnd::except::IException& error) {
        return createDiagnostic(error, blockPath);
    }
}

/// Runs `operation`. Returns false if it threw an IException. Other exceptions pass through.
template <class Operation>
bool succeeds(const Operation& operation) {
    if (tvsvDiagnosticImpl* diagnostic = guarded(nullptr, operation)) {
        discard(diagnostic);
        return false;
    }
    return true;
}

} // namespace TVTypeSys
