/// \file
/// Grammar of units as people write them.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// A name with its power, which is power * outer. If the name turns out to be a product, as Nm,
/// `power` applies to its last part alone. All magnitudes are at most 2147483647.
struct SpeltName {
    std::string_view name;
    std::size_t position = 0; ///< of the first byte
    std::int32_t power = 1;   ///< as written after the name
    std::int32_t outer = 1;   ///< of the groups around it, negative after a /
};

struct Spelling {
    std::vector<SpeltName> names; ///< views into the text that was parsed
    exact::Number factor = 1;     ///< the product of all numbers
};

/// Parses a unit:
///
///     unit     = ["/"] product { ( "*" | "/" | "." | "·" | "×" | "÷" ... ) product }
///     product  = factor { ["-"] factor }
///     factor   = ( name | number | "(" unit ")" ) { power }
///     power    = ("^" | "**") exponent | superscript | ("+" | "-") digits
///     exponent = ["+" | "-"] digits | "(" exponent ")"
///
/// The operators have equal precedence and associate to the left; juxtaposition and a dash, as in
/// J/kg-K, bind more tightly. No blank may precede a superscript, a signed power or a dash. A text
/// of blanks, or a dash alone, is a unit without names. The expressions of the library are a
/// subset, except for a sign before a number. The time is linear in the length.
///
/// Throws a text::ParseError.
Spelling parseSpelling(std::string_view text);

} // namespace tvtool::units
