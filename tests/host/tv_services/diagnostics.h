#pragma once

#include <fnd/except.h>
#include <tvtypes_res/base_msg_id.h>

#include <cstddef>
#include <string>
#include <vector>

class tvsvDiagnosticImpl {
  public:
    std::size_t size() const;
    const std::string& messageId(std::size_t index) const;
    const std::vector<std::string>& arguments(std::size_t index) const;
    const std::string& text(std::size_t index) const;
};

tvsvDiagnosticImpl* tvsvCreateDiagnosticFromMessageID(const msgcore::BaseMsgID& message);
tvsvDiagnosticImpl* tvsvCreateDiagnosticFromIException(const fnd::except::IException& error,
                                                       bool flag);
tvsvDiagnosticImpl* tvsvCreateMemoryAllocationDiagnostic();
void tvsvConcatenateDiagnostics(tvsvDiagnosticImpl*& all, tvsvDiagnosticImpl*& added, bool flag);
void tvsvDiscardDiagnostic(tvsvDiagnosticImpl*& diagnostic);
void tvsvReportAsWarning(tvsvDiagnosticImpl*& diagnostic);
[[noreturn]] void tvsvThrowIExceptionFromDiagnostic(tvsvDiagnosticImpl*& diagnostic,
                                                    const char* context);
