/// \file
/// Checks of options that exclude or require each other.
///
/// The checks of the command line library itself would list every such pair in the help.
#pragma once

#include <CLI/CLI.hpp>

#include <initializer_list>

namespace tvtool {

/// Throws a CLI::ExcludesError if the call has the option and one of the others.
inline void checkExclusion(const CLI::App& command, const char* option,
                           std::initializer_list<const char*> others) {
    for (const char* const other : others) {
        if (command.count(option) > 0 && command.count(other) > 0) {
            throw CLI::ExcludesError(option, other);
        }
    }
}

/// Throws a CLI::RequiresError if the call has one of the options and not the required one.
inline void checkRequirement(const CLI::App& command, std::initializer_list<const char*> options,
                             const char* required) {
    for (const char* const option : options) {
        if (command.count(option) > 0 && command.count(required) == 0) {
            throw CLI::RequiresError(option, required);
        }
    }
}

} // namespace tvtool
