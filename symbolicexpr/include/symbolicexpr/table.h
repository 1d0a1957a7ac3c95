/// \file
/// The table of expressions.
#pragma once

#include <fnd/export.h>

#include <cstddef>
#include <memory>

namespace TV {

class SymbolicExpr;
class SymbolicExprSimplify;

/// Holds one of each expression. An expression's id is its place in the order of coming, from 0;
/// its parts have lower ids than itself.
///
/// Ids and addresses stay for the life of the table. That expressions come to it is no change to
/// who reads it, so a table that is const takes them too. Used by one thread at a time.
class TV_PLATFORM_API SymbolicExprTable {
  public:
    SymbolicExprTable();
    SymbolicExprTable(const SymbolicExprTable&) = delete;
    SymbolicExprTable& operator=(const SymbolicExprTable&) = delete;
    ~SymbolicExprTable();

    /// How many expressions there are; the next one gets this id.
    std::size_t size() const;

    /// The expression with this id, which the table owns. Refused:
    /// TorvaneTypes::general::InvalidDataTypeId (id minus one, as it is known to models).
    const SymbolicExpr& get(unsigned long id) const;

    struct Contents;

  private:
    friend class SymbolicExpr;
    friend class SymbolicExprSimplify;

    std::unique_ptr<Contents> contents_;
};

} // namespace TV
