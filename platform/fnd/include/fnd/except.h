/// \file
/// The exceptions by which the libraries of this family refuse.
#pragma once

#include <fnd/export.h>

#include <memory>
#include <stdexcept>
#include <string>

class tvsvDiagnosticImpl;

namespace fnd::except {

/// A refusal. Carries the diagnostic that says what was refused and why; copies share it.
class TV_PLATFORM_API IException : public std::runtime_error {
  public:
    /// \param diagnostic what was refused; not null
    /// \param text       the whole text of the diagnostic, one line an element
    IException(std::shared_ptr<const tvsvDiagnosticImpl> diagnostic, const std::string& text);
    IException(const IException&) noexcept;
    IException& operator=(const IException&) noexcept;
    ~IException() override;

    /// The diagnostic, valid as long as any copy of this exception.
    const tvsvDiagnosticImpl& diagnostic() const noexcept { return *diagnostic_; }

  private:
    std::shared_ptr<const tvsvDiagnosticImpl> diagnostic_;
};

/// A refusal that the user of the tool can do something about.
class TV_PLATFORM_API IUserException : public IException {
  public:
    using IException::IException;
    IUserException(const IUserException&) noexcept;
    IUserException& operator=(const IUserException&) noexcept;
    ~IUserException() override;
};

} // namespace fnd::except
