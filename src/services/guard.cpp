#include "services/guard.h"

#include "services/refuse.h"

#include <fndut/alloc.h>
#include <tv_services/diagnostics.h>

namespace TVTypeSys {

tvsvDiagnosticImpl* diagnosticOf(const fnd::except::IException& refusal, const char* blockPath) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromIException(refusal, true);
    if (utStrlen(blockPath) != 0) {
        tvsvDiagnosticImpl* origin =
            tvsvCreateDiagnosticFromMessageID(general::DataTypeErrorFromBlock(blockPath));
        tvsvConcatenateDiagnostics(diagnostic, origin, true);
    }
    return diagnostic;
}

void discard(tvsvDiagnosticImpl* diagnostic) { tvsvDiscardDiagnostic(diagnostic); }

} // namespace TVTypeSys
