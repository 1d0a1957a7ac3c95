#include "services/refuse.h"

#include <tv_services/diagnostics.h>

namespace TVTypeSys {

void refuse(const msgcore::BaseMsgID& message) {
    refuse(tvsvCreateDiagnosticFromMessageID(message));
}

void refuse(tvsvDiagnosticImpl* diagnostic) {
    tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
}

void warn(const msgcore::BaseMsgID& message) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromMessageID(message);
    tvsvReportAsWarning(diagnostic);
}

void refuseForLackOfMemory() { refuse(tvsvCreateMemoryAllocationDiagnostic()); }

} // namespace TVTypeSys
