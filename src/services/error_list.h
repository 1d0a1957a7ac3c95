/// \file
/// Collects errors that are thrown together at the end of an operation.
#pragma once

#include <fnd/except.h>
#include <tvtypes_res/messages.h>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// Concatenates messages and caught errors into one diagnostic, in the order in which they are
/// added.
class ErrorList {
  public:
    ErrorList() = default;
    ErrorList(const ErrorList&) = delete;
    ErrorList& operator=(const ErrorList&) = delete;
    ~ErrorList();

    void add(const msgcore::BaseMsgID& message);
    void add(const fnd::except::IException& error);

    /// Throws the diagnostic if it is not empty.
    void throwIfAny();

  private:
    void append(tvsvDiagnosticImpl* diagnostic);

    tvsvDiagnosticImpl* all_ = nullptr;
};

} // namespace TVTypeSys
