/// \file
/// Options that exclude each other.
#pragma once

#include <CLI/CLI.hpp>

#include <initializer_list>

namespace tvtool {

/// Throws a CLI::ExcludesError if an option and one of the others are given. The excludes() of the
/// parser would add the list of the others to the help.
inline void refuseTogether(const CLI::Option* option,
                           std::initializer_list<const CLI::Option*> others) {
    for (const CLI::Option* const other : others) {
        if (option->count() > 0 && other->count() > 0) {
            throw CLI::ExcludesError(option->get_name(), other->get_name());
        }
    }
}

} // namespace tvtool
