#include "services/refuse.h"

#include <tv_services/diagnostics.h>

namespace TVTypeSys {

void refuse(const msgcore::BaseMsgID& message) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromMessageID(message);
    tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
}

} // namespace TVTypeSys
