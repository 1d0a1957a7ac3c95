/// \file
/// Conversion of units as people write them to expressions of the library.
#pragma once

#include "exact/number.h"
#include "text/parse_error.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::units {

/// The expression of a unit without dimension.
inline constexpr const char* unitless = "unitless";

struct Reading {
    std::string expression;   ///< in the grammar of the library
    bool isAsWritten = true;  ///< whether the expression is the text itself
    exact::Number factor = 1; ///< product of the numbers in the text, which expressions cannot hold
    /// How the text was read where it is not an expression of the library: sentences.
    std::vector<std::string> notes;
};

/// Error of a text with a name that is not in the database.
class UnknownUnit : public text::ParseError {
  public:
    UnknownUnit(std::string_view parsedText, std::size_t byte, std::string_view unknownName)
        : ParseError("the unit is not known", std::string(parsedText), byte), name(unknownName) {}

    std::string name;
};

/// Returns a name, valid in an expression, of the unit whose name, symbol or alias the text is;
/// else an empty text.
std::string findUnitName(std::string_view text);

/// Returns the expression for a text: the text itself if the library accepts it, else one for the
/// unit that people write like this. Loads the database, and throws its errors. Throws an
/// UnknownUnit or another text::ParseError for an invalid text.
Reading readUnit(std::string_view text);

} // namespace tvtool::units
