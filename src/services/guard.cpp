#include "services/guard.h"

#include "services/errors.h"

#include <fndut/alloc.h>
#include <tv_services/diagnostics.h>

namespace TVTypeSys {

tvsvDiagnosticImpl* createDiagnostic(const fnd::except::IException& error, const char* blockPath) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromIException(error, true);
    if (utStrlen(blockPath) != 0) {
        tvsvDiagnosticImpl* origin =
            tvsvCreateDiagnosticFromMessageID(general::DataTypeErrorFromBlock(blockPath));
        tvsvConcatenateDiagnostics(diagnostic, origin, true);
    }
    return diagnostic;
}

void discard(tvsvDiagnosticImpl* diagnostic) { tvsvDiscardDiagnostic(diagnostic); }

} // namespace TVTypeSys
