#include <tv_services/diagnostics.h>

#include <tvtypes_res/messages.h>

#include <cassert>
#include <cstdio>
#include <memory>
#include <utility>

namespace {

void writeToStandardError(const tvsvDiagnosticImpl& diagnostic) {
    const std::string line = "warning: " + diagnostic.wholeText() + "\n";
    std::fputs(line.c_str(), stderr);
}

tvsvWarningHandler& currentWarningHandler() {
    // Never destroyed, so that the destructors of clients can report warnings.
    static tvsvWarningHandler& handler = *new tvsvWarningHandler(writeToStandardError);
    return handler;
}

/// Takes ownership of a diagnostic and sets the pointer to null.
std::unique_ptr<tvsvDiagnosticImpl> take(tvsvDiagnosticImpl*& diagnostic) {
    return std::unique_ptr<tvsvDiagnosticImpl>(std::exchange(diagnostic, nullptr));
}

fnd::except::IUserException makeException(std::shared_ptr<const tvsvDiagnosticImpl> diagnostic,
                                          const char* context) {
    std::string text = diagnostic->wholeText();
    if (context != nullptr) {
        text = std::string(context) + ": " + text;
    }
    return {std::move(diagnostic), text};
}

} // namespace

tvsvDiagnosticImpl::tvsvDiagnosticImpl(const msgcore::BaseMsgID& message)
    : elements_{Element{message.id(), message.arguments(), message.text()}} {}

std::string tvsvDiagnosticImpl::wholeText() const {
    std::string whole;
    for (const Element& element : elements_) {
        if (!whole.empty()) {
            whole += '\n';
        }
        whole += element.text;
    }
    return whole;
}

void tvsvDiagnosticImpl::append(const tvsvDiagnosticImpl& other) {
    elements_.insert(elements_.end(), other.elements_.begin(), other.elements_.end());
}

tvsvDiagnosticImpl* tvsvCreateDiagnosticFromMessageID(const msgcore::BaseMsgID& message) {
    return std::make_unique<tvsvDiagnosticImpl>(message).release();
}

tvsvDiagnosticImpl* tvsvCreateMemoryAllocationDiagnostic() {
    return tvsvCreateDiagnosticFromMessageID(TorvaneTypes::general::MemoryAllocErr());
}

tvsvDiagnosticImpl* tvsvCreateDiagnosticFromIException(const fnd::except::IException& exception,
                                                       bool wholeChain) {
    auto diagnostic = std::make_unique<tvsvDiagnosticImpl>(exception.diagnostic());
    if (!wholeChain) {
        diagnostic->keepFirst();
    }
    return diagnostic.release();
}

void tvsvThrowIExceptionFromDiagnostic(tvsvDiagnosticImpl*& diagnostic, const char* context) {
    assert(diagnostic != nullptr);
    // This function has nothing to destroy, since each such frame makes unwinding slower.
    throw makeException(take(diagnostic), context);
}

void tvsvReportAsWarning(tvsvDiagnosticImpl*& diagnostic) {
    assert(diagnostic != nullptr);
    const std::unique_ptr<const tvsvDiagnosticImpl> owned = take(diagnostic);
    // Copied, since the handler may install another one.
    if (const tvsvWarningHandler handler = currentWarningHandler()) {
        handler(*owned);
    }
}

void tvsvConcatenateDiagnostics(tvsvDiagnosticImpl*& first, tvsvDiagnosticImpl*& second,
                                bool /*asCause*/) {
    std::unique_ptr<tvsvDiagnosticImpl> owned = take(second);
    if (first == nullptr) {
        first = owned.release();
    } else if (owned != nullptr) {
        first->append(*owned);
    }
}

void tvsvDiscardDiagnostic(tvsvDiagnosticImpl*& diagnostic) { take(diagnostic).reset(); }

tvsvWarningHandler tvsvSetWarningHandler(tvsvWarningHandler handler) {
    return std::exchange(currentWarningHandler(), std::move(handler));
}
