#include "services/error_list.h"

#include "services/errors.h"

#include <tv_services/diagnostics.h>

#include <utility>

namespace TVTypeSys {

ErrorList::~ErrorList() { tvsvDiscardDiagnostic(all_); }

void ErrorList::add(const msgcore::BaseMsgID& message) {
    append(tvsvCreateDiagnosticFromMessageID(message));
}

void ErrorList::add(const fnd::except::IException& error) {
    append(tvsvCreateDiagnosticFromIException(error, true));
}

void ErrorList::append(tvsvDiagnosticImpl* diagnostic) {
    tvsvConcatenateDiagnostics(all_, diagnostic, false);
}

void ErrorList::throwIfAny() {
    if (all_ != nullptr) {
        throwError(std::exchange(all_, nullptr));
    }
}

} // namespace TVTypeSys
