/// \file
/// Printer of expressions.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/expr.h>

#include <string>

namespace TV {

/// Prints expressions without blanks and with the fewest parentheses: `M-2`, `2*N+1`, `(N+1)/2`,
/// `-N`,
/// `[2,N]`, `N==M`, `N>M`. The text of an expression without relations parses to the same id.
///
/// A name that is no identifier is printed unchanged, inside arithmetic in parentheses. A shared
/// subexpression is printed at each occurrence, so a text can be far longer than the table; once it
/// exceeds 16 MiB, each subexpression that has not begun is printed as "...".
class TV_PLATFORM_API SymbolicExprPrinter {
  public:
    /// Refers to the table, which must outlive the printer.
    /// \param rank the context in which the text will be the first operand: 0 none, 1 a sum, 2 a
    ///             product. Other values are clamped.
    explicit SymbolicExprPrinter(const SymbolicExprTable& table, int rank = 0)
        : table_(&table), rank_(rank) {}

    /// Returns the text. Throws TorvaneTypes::general::InvalidDataTypeId if an operand is not in
    /// the table.
    std::string operator()(const SymbolicExpr& expr) const;

  private:
    const SymbolicExprTable* table_;
    int rank_;
};

} // namespace TV
