/// \file
/// Constructor texts of numeric types, such as fixdt(1,16,12).
#pragma once

#include <tvtypes/fixedpoint.h>

#include <string>

namespace tvtool::fixedpoint {

/// Returns whether a text is a constructor and not a name.
bool isConstructor(const std::string& text);

/// Returns the record of a constructor text in any of the forms that the library writes. Its
/// arguments are the signedness (0, 1, or [] if it is open), the word length, and at most one
/// scaling: a fraction length; slope and bias; or factor, exponent and bias. Without one, the type
/// is an integer. Throws a text::ParseError.
fxpDataTypeProp parseConstructor(const std::string& text);

} // namespace tvtool::fixedpoint
