/// \file
/// Conversion of units as people write them to expressions of the library.
#pragma once

#include "exact/number.h"
#include "text/parse_error.h"
#include "units/unit_names.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::units {

/// The expression of a unit without dimension.
inline constexpr const char* unitless = "unitless";

struct Reading {
    std::string expression;  ///< in the grammar of the library
    bool isAsWritten = true; ///< whether the expression is the text without its blanks
    /// Product of the numbers in the text, which expressions cannot hold; not 0.
    exact::Number factor = 1;
    /// What was read if the text is not an expression of the library, then the reasons where
    /// something was guessed; also remarks about expressions that are easily mistaken. Sentences.
    std::vector<std::string> notes;
};

/// Error of a text with a name that is not in the database.
class UnknownUnit : public text::ParseError {
  public:
    UnknownUnit(std::string_view parsedText, std::size_t byte, std::string_view unknownName)
        : ParseError("the unit is not known", std::string(parsedText), byte), name(unknownName) {}

    std::string name;
};

/// Returns the expression for a text: the text without its blanks if the library accepts it, else
/// one for the unit that people write like this. Loads the database, and throws its errors. Throws
/// an UnknownUnit or another text::ParseError for a text that is invalid or has several meanings.
Reading readUnit(std::string_view text);

} // namespace tvtool::units
