#pragma once

#include <exception>

class tvsvDiagnosticImpl;

namespace fnd::except {

class IException : public std::exception {
  public:
    const char* what() const noexcept override;
    const tvsvDiagnosticImpl& diagnostic() const noexcept;
};

class IUserException : public IException {};

} // namespace fnd::except
