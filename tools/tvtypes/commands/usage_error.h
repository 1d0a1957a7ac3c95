/// \file
/// Errors of calls, and checks of options that exclude or require each other.
///
/// The checks of the command line library itself would list every such pair in the help.
#pragma once

#include "text/argument_error.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <initializer_list>

namespace tvtool {

/// The arguments are no call of the command. The message refers to the help.
class UsageError : public text::ArgumentError {
  public:
    using ArgumentError::ArgumentError;
};

/// Throws a UsageError if the call has the option and one of the others.
inline void checkExclusion(const CLI::App& command, const char* option,
                           std::initializer_list<const char*> others) {
    for (const char* const other : others) {
        if (command.count(option) > 0 && command.count(other) > 0) {
            throw UsageError(fmt::format("{} and {} cannot be given together", option, other));
        }
    }
}

/// Throws a UsageError if the call has one of the options and not the required one.
inline void checkRequirement(const CLI::App& command, std::initializer_list<const char*> options,
                             const char* required) {
    for (const char* const option : options) {
        if (command.count(option) > 0 && command.count(required) == 0) {
            throw UsageError(fmt::format("{} needs {}", option, required));
        }
    }
}

} // namespace tvtool
