/// \file
/// Units as people write them.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// A name with its power, which is power * outer. What looks like a name may be a product, as Nm,
/// of which `power` belongs to the end alone. The amounts of all are at most 2147483647.
struct SpeltName {
    std::string_view name;
    std::size_t position = 0; ///< of the first byte
    std::int32_t power = 1;   ///< as it stands behind the name
    std::int32_t outer = 1;   ///< that of the groups around it, less than 0 below a /
};

struct Spelling {
    std::vector<SpeltName> names; ///< views into the text that was parsed
    exact::Number factor = 1;     ///< the product of all numbers
};

/// Where a text leaves the grammar: the position of a byte, and what should be there.
struct Fault {
    std::size_t position = 0;
    const char* expected = "";
};

/// Parses a unit:
///
///     unit     = ["/"] product { ( "*" | "/" | "." | "·" | "×" | "÷" ... ) product }
///     product  = factor { ["-"] factor }
///     factor   = ( name | number | "(" unit ")" ) { power }
///     power    = ("^" | "**") exponent | superscript | ("+" | "-") digits
///     exponent = ["+" | "-"] digits | "(" exponent ")"
///
/// Signs have one rank and go from left to right; what is joined without one, or by a dash as in
/// J/kg-K, belongs together. Ahead of a superscript, a signed power or a dash no blank may stand. A
/// text of blanks, or a dash alone, is a unit without names. The library's expressions are such
/// units but for a sign ahead of a number. The time is proportional to the length.
///
/// Replaces what `spelling` held; after a fault it holds nothing of use.
std::optional<Fault> parseSpelling(std::string_view text, Spelling& spelling);

} // namespace tvtool::units
