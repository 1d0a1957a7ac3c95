#include "table/refuse.h"

#include <tv_services/diagnostics.h>

namespace TV {

void refuse(const msgcore::BaseMsgID& message) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromMessageID(message);
    tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
}

void refuseId(unsigned long id) {
    // Models count from -1.
    refuse(TorvaneTypes::general::InvalidDataTypeId(static_cast<std::int64_t>(id) - 1));
}

} // namespace TV
