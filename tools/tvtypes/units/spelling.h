/// \file
/// Grammar of units as people write them.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// What separates a name from the one before it.
enum class Joint : std::uint8_t {
    Sign, ///< *, /, a parenthesis or a number, or nothing precedes
    Dot,  ///< a multiplication sign other than *
    Dash,
    Blank,
    None
};

/// A name with its power, which is power * outer. If the name turns out to be a product, as Nm,
/// `power` applies to its last part alone. All magnitudes are at most 2147483647.
struct SpeltName {
    std::string_view name;
    std::size_t position = 0; ///< of the first byte
    std::int32_t power = 1;   ///< as written after the name
    std::int32_t outer = 1;   ///< of the groups around it, negative after a /
    Joint joint = Joint::Sign;
    bool isDivisor = false;          ///< it follows a / within its group
    bool followsDivisor = false;     ///< a multiplication sign is between it and a divisor
    std::string_view qualifier = {}; ///< a single name in parentheses after it, as in bar(g)
};

struct Spelling {
    std::vector<SpeltName> names; ///< views into the text that was parsed
    exact::Number factor = 1;     ///< the product of all numbers
};

/// Parses a unit:
///
///     unit     = [over] product { ( "*" | "." | "·" | "×" ... | over ) product }
///     over     = "/" | "÷" ... | "per"
///     product  = factor { ["-"] factor }
///     factor   = ( [square] name [qualifier] | number | "(" unit ")" ) { power } [qualifier]
///     square   = "square" | "sq" | "sq." | "cubic" | "cu" | "cu."
///     power    = ("^" | "**") exponent | superscript | ("+" | "-") digits | "squared" | "cubed"
///     exponent = ["+" | "-"] digits | "(" exponent ")"
///     qualifier = "(" name ")"
///
/// Brackets may be square. The operators have equal precedence and associate to the left;
/// juxtaposition and a dash, as in J/kg-K, bind more tightly. No blank may precede a superscript, a
/// signed power or a dash. A number in a product precedes the names. A point after a name that no
/// name follows directly, as in "sq. ft.", marks an abbreviation and is skipped. A text of blanks,
/// or a dash alone, is a unit without names. The expressions of the library are a subset, except
/// for a sign before a number. The time is linear in the length.
///
/// Throws a text::ParseError.
Spelling parseSpelling(std::string_view text);

} // namespace tvtool::units
