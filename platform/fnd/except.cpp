#include <fnd/except.h>

#include <utility>

namespace fnd::except {

IException::IException(std::shared_ptr<const tvsvDiagnosticImpl> diagnostic,
                       const std::string& text)
    : std::runtime_error(text), diagnostic_(std::move(diagnostic)) {}

// Out of line, so that this library alone defines the type information of both classes.
IException::IException(const IException&) noexcept = default;
IException& IException::operator=(const IException&) noexcept = default;
IException::~IException() = default;

IUserException::IUserException(const IUserException&) noexcept = default;
IUserException& IUserException::operator=(const IUserException&) noexcept = default;
IUserException::~IUserException() = default;

} // namespace fnd::except
