/// \file
/// Exceptions of the host's libraries.
#pragma once

#include <fnd/export.h>

#include <memory>
#include <stdexcept>
#include <string>

class tvsvDiagnosticImpl;

namespace fnd::except {

/// An error with its diagnostic. Copies share the diagnostic.
class TV_PLATFORM_API IException : public std::runtime_error {
  public:
    /// \param diagnostic the message and its causes; not null
    /// \param text       the whole text of the diagnostic, one line for each element
    IException(std::shared_ptr<const tvsvDiagnosticImpl> diagnostic, const std::string& text);
    /// \name Copying
    /// @{

    /// Shares the diagnostic.
    IException(const IException&) noexcept;
    IException& operator=(const IException&) noexcept;
    /// @}
    ~IException() override;

    /// Returns the diagnostic, which is valid as long as any copy of this exception.
    const tvsvDiagnosticImpl& diagnostic() const noexcept { return *diagnostic_; }

  private:
    std::shared_ptr<const tvsvDiagnosticImpl> diagnostic_;
};

/// An error that the user of the host can resolve.
class TV_PLATFORM_API IUserException : public IException {
  public:
    using IException::IException;
    /// \name Copying
    /// @{

    /// Shares the diagnostic.
    IUserException(const IUserException&) noexcept;
    IUserException& operator=(const IUserException&) noexcept;
    /// @}
    ~IUserException() override;
};

} // namespace fnd::except
