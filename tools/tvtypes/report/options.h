/// \file
/// What the report of an inspection contains.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvtool::report {

/// Which variables are listed.
enum class VariableChoice : std::uint8_t {
    All,
    Interface, ///< inputs, outputs and parameters
    None
};

/// The order of the variables of a section. Equal ones are in the order of the description.
enum class VariableOrder : std::uint8_t { Line, Name, Type, Unit };

struct Options {
    VariableChoice variables = VariableChoice::Interface;
    /// Patterns of names, of which a listed variable matches one; all variables if empty.
    std::vector<std::string> filters;
    VariableOrder order = VariableOrder::Line;
    bool showsIds = false;         ///< whether tables have the ids of the library
    bool showsAllFindings = false; ///< whether no finding is folded or left out
};

} // namespace tvtool::report
