/// \file
/// What a text means in the units of the database.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace tvtool::units {

/// The expression of what has no dimension.
inline constexpr const char* unitless = "unitless";

struct Reading {
    std::string expression;   ///< as the library takes it
    bool isAsWritten = true;  ///< whether that is the text itself
    exact::Number factor = 1; ///< of the numbers in the text, for which an expression has no room
};

/// Why a text is no unit. Positions are in bytes.
struct Misreading {
    std::size_t position = 0;
    std::string sentence;
    std::string unknownName; ///< empty if something else is wrong
};

/// Reads a text as the library does, or, where that does not know it, as people write units. Loads
/// the database, and is refused as that is.
std::variant<Reading, Misreading> readUnit(std::string_view text);

} // namespace tvtool::units
