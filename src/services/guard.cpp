#include "services/guard.h"

#include "services/errors.h"

#include <fndut/alloc.h>
#include <tv_services/diagnostics.h>

#include <memory>

namespace TVTypeSys {

namespace {

struct Discard {
    void operator()(tvsvDiagnosticImpl* diagnostic) const { discard(diagnostic); }
};

} // namespace

tvsvDiagnosticImpl* createDiagnostic(const fnd::except::IException& error, const char* blockPath) {
    std::unique_ptr<tvsvDiagnosticImpl, Discard> diagnostic(
        tvsvCreateDiagnosticFromIException(error, true));
    if (utStrlen(blockPath) != 0) {
        tvsvDiagnosticImpl* origin =
            tvsvCreateDiagnosticFromMessageID(general::DataTypeErrorFromBlock(blockPath));
        tvsvDiagnosticImpl* all = diagnostic.get();
        tvsvConcatenateDiagnostics(all, origin, true);
    }
    return diagnostic.release();
}

void discard(tvsvDiagnosticImpl* diagnostic) { tvsvDiscardDiagnostic(diagnostic); }

} // namespace TVTypeSys
