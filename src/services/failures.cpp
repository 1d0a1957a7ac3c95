#include "services/failures.h"

#include "services/refuse.h"

#include <tv_services/diagnostics.h>

#include <utility>

namespace TVTypeSys {

Failures::~Failures() { tvsvDiscardDiagnostic(all_); }

void Failures::note(const msgcore::BaseMsgID& message) {
    add(tvsvCreateDiagnosticFromMessageID(message));
}

void Failures::note(const fnd::except::IException& refusal) {
    add(tvsvCreateDiagnosticFromIException(refusal, true));
}

void Failures::add(tvsvDiagnosticImpl* diagnostic) {
    tvsvConcatenateDiagnostics(all_, diagnostic, false);
}

void Failures::refuseIfAny() {
    if (all_ != nullptr) {
        refuse(std::exchange(all_, nullptr));
    }
}

} // namespace TVTypeSys
