/// \file
/// Texts to expressions.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

#include <string>

namespace TV {

/// Reads an expression: `+ - * /` with the usual ranks and from the left, a minus before an
/// operand, parentheses, decimal integers of any length, names as C identifiers, `[a, b, c]` for a
/// list; blanks anywhere between. A minus binds its operand first, and one straight before an
/// integer is part of that number.
class TV_PLATFORM_API SymbolicExprParser {
  public:
    explicit SymbolicExprParser(SymbolicExprTable& table) : table_(&table) {}

    /// The id of the expression. Refused, with the table as it was:
    /// TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr (the text, the column from 1 where it
    /// goes wrong) for other texts, those over 1 MiB, and more than 1,000 brackets in each other.
    /// The column is that of the first token that cannot stand where it does, or the one behind the
    /// text if it ends too early.
    unsigned long operator()(const std::string& text) const;

  private:
    SymbolicExprTable* table_;
};

} // namespace TV
