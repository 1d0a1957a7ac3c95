/// \file
/// Errors of the library and the tool as the Python exception tvtypes.Error.
#pragma once

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <string>

namespace tvpython {

/// An argument that is invalid. what() is a sentence for the user.
class ArgumentError : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

/// Translates the exceptions of the library, the tool and this module into tvtypes.Error.
void registerErrors();

} // namespace tvpython
