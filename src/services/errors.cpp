#include "services/errors.h"

namespace TVTypeSys {

void throwError(const msgcore::BaseMsgID& message) {
    throwError(tvsvCreateDiagnosticFromMessageID(message));
}

tvsvDiagnosticImpl* createDiagnostic(const msgcore::BaseMsgID& message) {
    return tvsvCreateDiagnosticFromMessageID(message);
}

void throwOutOfMemory() { throwError(tvsvCreateMemoryAllocationDiagnostic()); }

void reportWarning(const msgcore::BaseMsgID& message) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromMessageID(message);
    tvsvReportAsWarning(diagnostic);
}

} // namespace TVTypeSys
