/// \file
/// A sparse tableau of equations: basic columns as forms of the other ones.
#pragma once

#include "solver/linear_form.h"

#include <optional>
#include <set>
#include <vector>

namespace tvtool::solver {

/// A system of equations in solved form. A basic column has a row; the rows have free columns only.
class Tableau {
  public:
    Column addColumn();
    /// Removes a free column that no row has.
    void removeLastColumn();
    Column size() const { return static_cast<Column>(rows_.size()); }

    bool isBasic(Column column) const { return rows_[column].has_value(); }
    const LinearForm& row(Column basic) const { return *rows_[basic]; }

    /// Returns the basic columns whose rows contain a free column.
    const std::set<Column>& uses(Column column) const { return uses_[column]; }

    /// Replaces a free column by a form of other free columns in a row.
    void substitute(Column basic, Column column, const LinearForm& form);

    /// Defines, replaces or removes a row, and returns the one before.
    std::optional<LinearForm> set(Column column, std::optional<LinearForm> row);

  private:
    std::vector<std::optional<LinearForm>> rows_;
    std::vector<std::set<Column>> uses_;
};

} // namespace tvtool::solver
