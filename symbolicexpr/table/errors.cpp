#include "table/errors.h"

#include <tv_services/diagnostics.h>

namespace TV {

void throwError(const msgcore::BaseMsgID& message) {
    tvsvDiagnosticImpl* diagnostic = tvsvCreateDiagnosticFromMessageID(message);
    tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
}

void throwInvalidId(unsigned long id) {
    throwError(TorvaneTypes::general::InvalidDataTypeId(static_cast<std::int64_t>(id) - 1));
}

} // namespace TV
