/// \file
/// Parser of definitions such as "0.3048 m": an exact number and an expression over units.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <map>
#include <string>
#include <string_view>

namespace tvdata {

/// Exact rational numbers, without expression templates, whose results refer to their operands.
using Exact = boost::multiprecision::number<boost::multiprecision::cpp_rational::backend_type,
                                            boost::multiprecision::et_off>;
using Integer = boost::multiprecision::number<boost::multiprecision::cpp_int::backend_type,
                                              boost::multiprecision::et_off>;
using Constants = std::map<std::string, Exact, std::less<>>;
/// Powers by name. A name that cancels stays with power 0, as in the canonical forms of the
/// library.
using Powers = std::map<std::string, int, std::less<>>;

struct Definition {
    Exact factor = 1;
    std::string expression;
};

/// Returns a power. \pre `number` is not 0 if `power` is negative.
Exact raised(const Exact& number, int power);

/// Parses a product or quotient of decimal numbers and constants with optional integer powers:
/// "25.4", "1/7000", "5*10^-3", "pi/180". Throws Fault for any other text and for numbers that are
/// not positive.
Exact parseNumber(std::string_view text, const Constants& constants);

/// Parses an optional number with a blank after it, and an expression, which is not parsed further.
Definition parseDefinition(std::string_view text, const Constants& constants);

/// Parses an expression in the grammar of units: names, "*", "/", "^" with an integer, parentheses,
/// and "1/" at the start. Throws Fault for a syntax error and for a group at the start of another
/// group, which the library accepts only if it is all of the outer group.
Powers parseExpression(std::string_view text);

/// Formats an expression with these powers: "kg*m^2/(A*s^3)". A power of 0 is formatted as "m/m".
std::string formatExpression(const Powers& powers);

/// Returns whether a text consists of letters, digits and underscores, at least one.
bool isName(std::string_view text);

} // namespace tvdata
