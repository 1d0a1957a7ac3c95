/// \file
/// A definition, such as "0.3048 m": an exact number and an expression over units.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <map>
#include <string>
#include <string_view>

namespace tvdata {

/// Without expression templates, whose results refer to what they are made from.
using Exact = boost::multiprecision::number<boost::multiprecision::cpp_rational::backend_type,
                                            boost::multiprecision::et_off>;
using Integer = boost::multiprecision::number<boost::multiprecision::cpp_int::backend_type,
                                              boost::multiprecision::et_off>;
using Constants = std::map<std::string, Exact, std::less<>>;
/// Powers by name. A name that cancels stays, with power 0, as it does for those who parse units.
using Powers = std::map<std::string, int, std::less<>>;

struct Definition {
    Exact factor = 1;
    std::string expression;
};

/// \p number to the power \p power, which may be negative if \p number is not 0.
Exact raised(const Exact& number, int power);

/// Products and quotients of decimal numbers and constants, each with an integer power or without:
/// "25.4", "1/7000", "5*10^-3", "pi/180". Throws a Fault if it is anything else, or not above 0.
Exact parseNumber(std::string_view text, const Constants& constants);

/// A number, a blank and an expression, or an expression alone.
Definition parseDefinition(std::string_view text, const Constants& constants);

/// The powers of the names in an expression of the grammar of units: names, "*", "/", "^" with an
/// integer, parentheses, and "1/" at the start. Two parentheses in a row are refused: the library
/// takes what is in the inner ones for all that is in the outer ones.
Powers parseExpression(std::string_view text);

/// An expression with these powers: "kg*m^2/(A*s^3)". A power of 0 shows as "m/m".
std::string expressionOf(const Powers& powers);

/// Letters, digits and underscores, one at least.
bool isName(std::string_view text);

} // namespace tvdata
