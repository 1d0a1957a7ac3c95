/// \file
/// Expressions to texts.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/expr.h>

#include <string>

namespace TV {

/// Writes an expression without blanks and without needless parentheses: `M-2`, `2*N+1`, `(N+1)/2`,
/// `-N`, `[2,N]`, `N==M`, `N>M`. The text of an expression of a size reads back to the same id.
///
/// A name that is no identifier is written as it stands, in parentheses inside arithmetic. What is
/// shared in an expression is written wherever it stands, so a text can be far longer than the
/// table; once it is over 16 MiB, each part that has not begun yet is written as "...".
class TV_PLATFORM_API SymbolicExprPrinter {
  public:
    /// `rank` tells what the text will stand in, as the first operand: 0 alone, 1 in a sum, 2 in a
    /// product.
    explicit SymbolicExprPrinter(const SymbolicExprTable& table, int rank = 0)
        : table_(&table), rank_(rank) {}

    std::string operator()(const SymbolicExpr& expr) const;

  private:
    const SymbolicExprTable* table_;
    int rank_;
};

} // namespace TV
