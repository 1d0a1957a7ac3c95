/// \file
/// Failures that do not end an operation, collected for its end.
#pragma once

#include <fnd/except.h>
#include <tvtypes_res/messages.h>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// Joins messages and refusals into one diagnostic, in the order in which they are noted.
class Failures {
  public:
    Failures() = default;
    Failures(const Failures&) = delete;
    Failures& operator=(const Failures&) = delete;
    ~Failures();

    void note(const msgcore::BaseMsgID& message);
    void note(const fnd::except::IException& refusal);

    /// Throws what has been noted, if anything has.
    void refuseIfAny();

  private:
    void add(tvsvDiagnosticImpl* diagnostic);

    tvsvDiagnosticImpl* all_ = nullptr;
};

} // namespace TVTypeSys
