/// \file
/// Exact simplex over fractions, with branch and bound for whole numbers.
#pragma once

#include "solver/reasons.h"
#include "solver/tableau.h"
#include "solver/value.h"
#include "solver/work.h"

#include <optional>
#include <vector>

namespace tvtool::solver {

/// Finds values for columns within bounds, or bounds that exclude each other (Dutertre and de
/// Moura, 2006). The values given at first are kept as far as the bounds allow.
class Simplex {
  public:
    explicit Simplex(Work& work) : work_(work) {}

    /// Adds a free column with a first value.
    Column addColumn(const Value& value);

    /// Adds a column that equals a form, without a constant, of columns added before.
    Column addRow(LinearForm form);

    void boundBelow(Column column, const Value& bound, Reason reason);
    void boundAbove(Column column, const Value& bound, Reason reason);

    /// Moves the values into the bounds. Returns the reasons of bounds that exclude each other.
    /// If the work is exhausted, the values need not be within the bounds.
    std::optional<std::vector<Reason>> solve();

    /// The same with whole numbers for some columns, by branch and bound. Nothing is decided if
    /// `isUndecided` is set: the search tree has more than some hundred nodes.
    std::optional<std::vector<Reason>> solveWhole(const std::vector<Column>& columns,
                                                  bool& isUndecided);

    const Value& value(Column column) const { return values_[column]; }

  private:
    struct Bound {
        Value value;
        Reason reason;
    };
    struct Bounds {
        std::optional<Bound> lower;
        std::optional<Bound> upper;
    };
    /// The bound of a branch, which is no reason.
    static constexpr Reason branch = static_cast<Reason>(-1);

    bool isBelow(Column column) const;
    bool isAbove(Column column) const;
    void move(Column column, const Value& value);
    bool pivot(Column basic, Column free);
    std::optional<Column> findEntering(Column basic, bool mustGrow) const;
    std::vector<Reason> conflict(Column basic, bool mustGrow) const;

    Work& work_;
    Tableau tableau_;
    std::vector<Value> values_;
    std::vector<Bounds> bounds_;
    std::optional<std::vector<Reason>> clash_; ///< bounds of one column that exclude each other
};

} // namespace tvtool::solver
