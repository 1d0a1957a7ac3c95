/// \file
/// Parser of definitions such as "0.3048 m": an exact number and an expression over units.
#pragma once

#include "number.h"

#include <map>
#include <string>
#include <string_view>

namespace tvdata {

/// Powers by name. A name that cancels stays with power 0, as in the canonical forms of the
/// library.
using Powers = std::map<std::string, int, std::less<>>;

struct Definition {
    Number factor;
    std::string expression;
};

/// Parses a product or quotient of decimal numbers and "pi" with optional integer powers: "25.4",
/// "1/7000", "5*10^-3", "pi/180". The standard uncertainty of a measured value follows in units of
/// its last digit: "1.66053906892(52)*10^-27". Throws Fault for any other text and for numbers that
/// are not positive.
Number parseNumber(std::string_view text);

/// Parses an optional number with a blank after it, and an expression, which is not parsed further.
Definition parseDefinition(std::string_view text);

/// Parses an expression in the grammar of units: names, "*", "/", "^" with an integer, parentheses,
/// and "1/" at the start. Throws Fault for a syntax error and for a group at the start of another
/// group, which the library accepts only if it is all of the outer group.
Powers parseExpression(std::string_view text);

/// Multiplies a product by a factor to an integer power.
void multiply(Powers& product, const Powers& factor, int power);

/// Formats an expression with these powers: "kg*m^2/(A*s^3)". A power of 0 is formatted as "m/m".
std::string formatExpression(const Powers& powers);

/// Returns whether a text consists of letters, digits and underscores, at least one.
bool isName(std::string_view text);

} // namespace tvdata
