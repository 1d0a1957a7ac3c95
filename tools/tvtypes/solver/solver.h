/// \file
/// Decision of equations and inequalities between sizes.
#pragma once

#include "solver/differences.h"
#include "solver/polynomial.h"
#include "solver/reasons.h"
#include "solver/tableau.h"
#include "solver/value.h"
#include "solver/work.h"

#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace tvtool::solver {

/// The numbers that sizes can be.
enum class Domain {
    Any,         ///< all fractions
    NotNegative, ///< fractions that are not negative
    Whole        ///< whole numbers that are not negative
};

/// A polynomial that is 0, positive or not negative.
struct Constraint {
    enum class Sign { Zero, Positive, NotNegative };
    Polynomial polynomial;
    Sign sign = Sign::Zero;
};

/// A set of constraints that do not contradict each other, as far as this class decides.
///
/// Each monomial is a column. Equations are kept in solved form (Gauss-Jordan elimination), and so
/// are inequalities, each with a slack column. A row with the value of an unknown, or a form of it,
/// is substituted in the products with this unknown. Inequalities between two columns are checked
/// as differences, all together by a simplex of the columns that a new constraint affects.
///
/// All linear constraints are decided, except whole numbers that take too much work. Products
/// of unknown sizes are decided as far as substitution, roots and ranges lead.
class Solver {
  public:
    enum class Outcome { Consistent, Contradiction, Undecided };

    /// \param work is charged, and must outlive the solver
    Solver(Domain domain, Work& work);

    /// Adds a constraint unless it contradicts the others, or nothing can be decided.
    Outcome add(const Constraint& constraint, FactIndex fact);

    /// Returns what add() would, and adds nothing.
    Outcome test(const Constraint& constraint, FactIndex fact);

    /// Returns the facts that the last contradiction rests on.
    const std::set<FactIndex>& conflict() const { return conflict_; }

    /// Returns the value of a polynomial if the equations determine it.
    std::optional<Number> value(const Polynomial& polynomial);

  private:
    /// Unknowns from here on are auxiliary: whole numbers of any sign.
    static constexpr Unknown firstAuxiliary = Unknown{1} << 31;

    /// The state of a column, or a part of it, before a change.
    struct Change {
        enum class Kind { Row, Expansion, Bounding, Point, Clean };
        Kind kind;
        Column column;
        std::optional<LinearForm> row;
        Reason reason = 0;
        std::optional<Value> point;
    };
    struct ColumnState {
        Monomial monomial; ///< empty for a slack column
        bool isStrict = false;
        bool isGeneral = false;     ///< whether it is a slack column of generalRows_
        bool isExpanded = false;    ///< whether the equation of the expanded product was added
        unsigned boundings = 0;     ///< calls of boundProduct() for this product
        Reason reason = 0;          ///< of the row
        std::optional<Value> point; ///< of a free column; see point()
    };
    struct Equation {
        LinearForm form; ///< is 0
        Reason reason;
    };
    struct Mark {
        std::size_t changes;
        std::size_t differences;
        std::size_t reasons;
        std::size_t columns;
    };
    struct Bound {
        Number value;
        bool isStrict;
        Reason reason;
    };
    struct Range {
        std::optional<Bound> lower;
        std::optional<Bound> upper;
    };

    // solver.cpp: constraints and their removal
    void keep();
    Mark mark() const;
    void undo(const Mark& mark);
    Outcome post(const Constraint& constraint, FactIndex fact);
    bool propagate();
    bool fail(Reason reason);
    Column addColumn(const Monomial& monomial);
    Column columnOf(const Monomial& monomial);
    void removeLastColumn();
    LinearForm linear(const Polynomial& polynomial);
    void setRow(Column column, std::optional<LinearForm> row, Reason reason);
    void substitute(Column basic, Column column, const LinearForm& form, Reason reason);
    void noteInequality(Column slack);
    void addInequality(LinearForm form, bool isStrict, Reason reason);

    // elimination.cpp: equations
    bool addEquation(Equation equation);
    bool solveFor(Column pivot, const LinearForm& form, Reason reason);
    Column pivotOf(const LinearForm& form) const;
    bool rewrite(const Equation& equation);
    Equation reduced(Equation equation);
    bool checkEquation(Column basic);

    // products.cpp: monomials of several factors
    bool isProduct(Column column) const { return states_[column].monomial.size() > 1; }
    void queueExpansions(Column basic);
    void expand(Column product);
    bool checkProduct(Column basic);
    bool checkRoots(Column basic);
    bool checkDivisors(Column basic);
    void cancelFactors(Column basic);
    void takeRoot(Column basic);
    void boundProduct(Column product);

    // inequalities.cpp: bounds, differences and the point that satisfies all inequalities
    bool isSlack(Column column) const { return states_[column].monomial.empty(); }
    bool isNotNegative(Column column) const;
    bool isGeneral(const LinearForm& form) const;
    void tighten(LinearForm& form, bool& isStrict) const;
    bool checkInequality(Column slack);
    bool checkDifference(const LinearForm& form, bool isStrict, Reason reason);
    bool checkRange(Column column);
    Range range(Column column) const;
    bool repairPoint();
    const Value& point(Column column);
    Value valueAt(const LinearForm& form);
    bool isSatisfied(Column slack);
    void movePoint(Column column, const Value& value);

    Domain domain_;
    Work& work_;
    Reasons reasons_;
    Reason domainReason_;
    Tableau tableau_;
    std::vector<ColumnState> states_;
    std::map<Monomial, Column> columns_;
    std::unordered_map<Unknown, std::vector<Column>> productsOf_;
    std::vector<Column> products_;
    Unknown nextAuxiliary_ = firstAuxiliary;
    Differences differences_;
    std::size_t generalRows_ = 0; ///< inequalities that are no differences

    std::vector<Equation> equations_; ///< to be added
    std::vector<Column> expansions_;  ///< products to be expanded
    std::set<Column> changed_;        ///< slack columns to be checked
    std::set<Column> dirty_;          ///< slack columns whose row the point may not satisfy
    std::vector<Change> trail_;
    std::set<FactIndex> conflict_;
    bool isUndecided_ = false;
};

} // namespace tvtool::solver
