/// \file
/// Errors that the library throws for a model.
#pragma once

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <new>
#include <string>

namespace tvtool::model {

/// Returns the text of an error that is one of the model. Throws std::bad_alloc for the library's
/// error of a failed allocation.
inline std::string problemText(const fnd::except::IException& error) {
    const tvsvDiagnosticImpl& diagnostic = error.diagnostic();
    for (std::size_t i = 0; i < diagnostic.size(); ++i) {
        if (diagnostic.messageId(i).ends_with("::MemoryAllocErr")) {
            throw std::bad_alloc();
        }
    }
    return error.what();
}

} // namespace tvtool::model
