/// \file
/// Options that go without one another.
#pragma once

#include <CLI/CLI.hpp>

#include <initializer_list>

namespace tvtool {

/// Refuses a call that has an option and one of the others. Left to the parser, its help would list
/// all of this.
inline void refuseTogether(const CLI::Option* option,
                           std::initializer_list<const CLI::Option*> others) {
    for (const CLI::Option* const other : others) {
        if (option->count() > 0 && other->count() > 0) {
            throw CLI::ExcludesError(option->get_name(), other->get_name());
        }
    }
}

} // namespace tvtool
