/// \file
/// Expressions from one table to another.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

namespace TV {

class TV_PLATFORM_API SymbolicExprCopy {
  public:
    SymbolicExprCopy(const SymbolicExprTable& source, SymbolicExprTable& destination)
        : source_(&source), destination_(&destination) {}

    /// Copies the expression with this id of the source and its parts, each once, parts first and
    /// from the left. The id in the destination. Refused, with the destination as it was:
    /// TorvaneTypes::general::InvalidDataTypeId (id minus one).
    unsigned long operator()(unsigned long id) const;

  private:
    const SymbolicExprTable* source_;
    SymbolicExprTable* destination_;
};

} // namespace TV
