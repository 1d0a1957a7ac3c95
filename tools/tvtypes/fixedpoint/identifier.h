/// \file
/// Names of numeric types.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <string>

namespace tvtool::fixedpoint {

/// Returns the valid record that a name describes. Names that the library would write in another
/// form, such as sfix16_E0 and sfix16_S0p5, are accepted. The signedness is 0 or 1, the override
/// state 0. Throws a text::ParseError.
fxpDataTypeProp parseTypeName(const std::string& name);

} // namespace tvtool::fixedpoint
