/// \file
/// Table of expressions.
#pragma once

#include <fnd/export.h>

#include <cstddef>
#include <memory>

namespace TV {

class SymbolicExpr;
class SymbolicExprCopy;
class SymbolicExprParser;
class SymbolicExprSimplify;

/// Interns expressions (hash-consing): expressions that are written alike are stored once. Ids
/// count from 0 in the order of insertion, so operands have lower ids than their operators.
///
/// Ids and addresses are stable for the lifetime of the table. Interning does not affect readers,
/// so it is allowed on a const table too. A table may be used by one thread at a time. An operation
/// that fails, also for lack of memory, adds nothing.
class TV_PLATFORM_API SymbolicExprTable {
  public:
    /// Creates an empty table.
    SymbolicExprTable();
    SymbolicExprTable(const SymbolicExprTable&) = delete;
    SymbolicExprTable& operator=(const SymbolicExprTable&) = delete;
    ~SymbolicExprTable();

    /// Returns the number of expressions, which is the next id.
    std::size_t size() const;

    /// Returns the expression with this id, which the table owns. Throws
    /// TorvaneTypes::general::InvalidDataTypeId (id minus one, as clients number it) if there is
    /// none.
    const SymbolicExpr& get(unsigned long id) const;

    /// For the sources of this library.
    struct Contents;

  private:
    friend class SymbolicExpr;
    friend class SymbolicExprCopy;
    friend class SymbolicExprParser;
    friend class SymbolicExprSimplify;

    std::unique_ptr<Contents> contents_;
};

} // namespace TV
