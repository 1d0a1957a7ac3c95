/// \file
/// Names of numeric types.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <string>

namespace tvtool::fixedpoint {

/// Returns the valid record that a name or a constructor text describes. Names that the library
/// would write in another form, such as sfix16_E0 and sfix16_S0p5, are accepted. Throws a
/// text::ParseError.
fxpDataTypeProp parseTypeName(const std::string& name);

} // namespace tvtool::fixedpoint
