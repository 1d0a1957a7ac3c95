/// \file
/// The lines of which a file of facts is made.
#pragma once

#include "text/parse_error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tvtool::dims {

enum class Sign { Equal, Greater, Less };
const char* textOf(Sign sign);

struct Side {
    std::string text;
    std::size_t position = 0; ///< in the line
};

/// `N > 2 # Gain1` states a fact for a block, `N > 2 ?` asks for it.
struct FactLine {
    Side left;
    Sign sign = Sign::Equal;
    Side right;
    bool isQuestion = false;
    std::string block; ///< empty if the line names none
};

/// Takes a line apart. Empty for one that is blank or a comment, which begins with #. Throws a
/// text::ParseError.
std::optional<FactLine> splitLine(std::string_view line);

} // namespace tvtool::dims
