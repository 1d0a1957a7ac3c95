/// \file
/// Names of numeric types, read.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <string>

namespace tvtool::fixedpoint {

/// The record that a name stands for: the valid one whose name it is or, where the library writes
/// the same in another way, as for sfix16_E0 or sfix16_S0p5, the one that it means. Its signedness
/// is 0 or 1, its override state 0. Throws a text::ParseError.
fxpDataTypeProp recordNamed(const std::string& name);

} // namespace tvtool::fixedpoint
