/// \file
/// Parser of expressions.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

#include <string>

namespace TV {

/// Parses expressions: `+ - * /` with the usual precedence, left-associative; unary minus, which
/// binds tightest, and directly before an integer is part of it; parentheses; decimal integers of
/// any length; names as C identifiers; `[a, b, c]` for a list; white space between tokens.
class TV_PLATFORM_API SymbolicExprParser {
  public:
    /// Refers to the table, which must outlive the parser.
    explicit SymbolicExprParser(SymbolicExprTable& table) : table_(&table) {}

    /// Parses a text, interns the expression as written and returns its id. Throws
    /// TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr (the text, column) for any other
    /// text, a text longer than 1 MiB, and more than 1,000 nested parentheses and brackets; the
    /// table is unchanged then. The column counts bytes from 1. It is that of the first token that
    /// is not allowed, or one past the text if the text ends too early. Linear in the length of the
    /// text.
    unsigned long operator()(const std::string& text) const;

  private:
    SymbolicExprTable* table_;
};

} // namespace TV
