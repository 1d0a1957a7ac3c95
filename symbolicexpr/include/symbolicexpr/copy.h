/// \file
/// Copies of expressions in another table.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

namespace TV {

/// Copies expressions from one table to another. Both tables must outlive it; they may be the same.
class TV_PLATFORM_API SymbolicExprCopy {
  public:
    /// Refers to both tables.
    SymbolicExprCopy(const SymbolicExprTable& source, SymbolicExprTable& destination)
        : source_(&source), destination_(&destination) {}

    /// Copies the expression with this id of the source and returns its id in the destination. Each
    /// subexpression is copied once, operands before operators and from left to right. Throws
    /// TorvaneTypes::general::InvalidDataTypeId (id minus one) if the source has no such id; the
    /// destination is unchanged then. Linear in the number of subexpressions.
    unsigned long operator()(unsigned long id) const;

  private:
    const SymbolicExprTable* source_;
    SymbolicExprTable* destination_;
};

} // namespace TV
