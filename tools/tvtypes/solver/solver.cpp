#include "solver/solver.h"

#include <cassert>
#include <utility>

namespace tvtool::solver {

Solver::Solver(Domain domain, Work& work)
    : domain_(domain), work_(work), domainReason_(reasons_.fact(domainFact)), differences_(work) {}

Solver::Mark Solver::mark() const {
    return {trail_.size(), differences_.mark(), reasons_.size(), states_.size()};
}

Solver::Outcome Solver::add(const Constraint& constraint, FactIndex fact) {
    const Mark before = mark();
    const Outcome outcome = post(constraint, fact);
    if (outcome == Outcome::Consistent) {
        keep();
    } else {
        undo(before);
    }
    return outcome;
}

/// Forgets what undo() needs.
void Solver::keep() {
    trail_.clear();
    differences_.keep();
}

Solver::Outcome Solver::test(const Constraint& constraint, FactIndex fact) {
    const Mark before = mark();
    const Outcome outcome = post(constraint, fact);
    undo(before);
    return outcome;
}

Solver::Outcome Solver::post(const Constraint& constraint, FactIndex fact) {
    isUndecided_ = false;
    constexpr std::uint64_t leastSteps = 50;
    if (!work_.charge(leastSteps)) {
        return Outcome::Undecided;
    }
    const Reason reason = reasons_.fact(fact);
    LinearForm form = linear(constraint.polynomial);
    if (constraint.sign == Constraint::Sign::Zero) {
        equations_.push_back({std::move(form), reason});
    } else {
        addInequality(std::move(form), constraint.sign == Constraint::Sign::Positive, reason);
    }
    const bool isConsistent = propagate();
    if (work_.isExhausted() || (isConsistent && isUndecided_)) {
        return Outcome::Undecided;
    }
    return isConsistent ? Outcome::Consistent : Outcome::Contradiction;
}

/// Derives consequences until nothing changes. Returns false on a contradiction.
bool Solver::propagate() {
    while (!work_.isExhausted()) {
        if (!equations_.empty()) {
            Equation equation = std::move(equations_.back());
            equations_.pop_back();
            if (!addEquation(std::move(equation))) {
                return false;
            }
        } else if (!expansions_.empty()) {
            const Column product = expansions_.back();
            expansions_.pop_back();
            expand(product);
        } else if (!changed_.empty()) {
            const Column slack = *changed_.begin();
            changed_.erase(changed_.begin());
            if (!checkInequality(slack)) {
                return false;
            }
        } else {
            return repairPoint();
        }
    }
    return true;
}

/// Stores what a contradiction rests on. Returns false.
bool Solver::fail(Reason reason) {
    conflict_ = reasons_.facts(reason);
    return false;
}

void Solver::undo(const Mark& mark) {
    equations_.clear();
    expansions_.clear();
    changed_.clear();
    while (trail_.size() > mark.changes) {
        Change change = std::move(trail_.back());
        trail_.pop_back();
        ColumnState& state = states_[change.column];
        switch (change.kind) {
        case Change::Kind::Row:
            setRow(change.column, std::move(change.row), change.reason);
            trail_.pop_back();
            break;
        case Change::Kind::Expansion:
            state.isExpanded = false;
            break;
        case Change::Kind::Bounding:
            --state.boundings;
            break;
        case Change::Kind::Point:
            state.point = change.point;
            break;
        case Change::Kind::Clean:
            dirty_.insert(change.column);
            break;
        }
    }
    changed_.clear();
    while (states_.size() > mark.columns) {
        removeLastColumn();
    }
    differences_.undo(mark.differences);
    reasons_.shrink(mark.reasons);
}

Column Solver::addColumn(const Monomial& monomial) {
    states_.emplace_back().monomial = monomial;
    return tableau_.addColumn();
}

/// Removes a column that no row has.
void Solver::removeLastColumn() {
    const Monomial& monomial = states_.back().monomial;
    if (isProduct(tableau_.size() - 1)) {
        products_.pop_back();
        for (const Unknown unknown : monomial) {
            std::vector<Column>& products = productsOf_[unknown];
            if (!products.empty() && products.back() == tableau_.size() - 1) {
                products.pop_back();
            }
        }
    }
    if (monomial.empty()) {
        dirty_.erase(tableau_.size() - 1);
    } else {
        columns_.erase(monomial);
    }
    states_.pop_back();
    tableau_.removeLastColumn();
}

Column Solver::columnOf(const Monomial& monomial) {
    const auto [known, isNew] = columns_.try_emplace(monomial, 0);
    if (!isNew) {
        return known->second;
    }
    const Column column = known->second = addColumn(monomial);
    if (isProduct(column)) {
        products_.push_back(column);
        for (std::size_t i = 0; i < monomial.size(); ++i) {
            if (i == 0 || monomial[i] != monomial[i - 1]) {
                productsOf_[monomial[i]].push_back(column);
            }
        }
    }
    if (isNotNegative(column)) {
        differences_.add(Differences::nodeOf(column), Differences::zero, {}, domainReason_);
    }
    return column;
}

LinearForm Solver::linear(const Polynomial& polynomial) {
    std::map<Column, Number> terms;
    for (const auto& [monomial, coefficient] : polynomial.terms()) {
        if (!monomial.empty()) {
            const Column column = columnOf(monomial);
            terms.emplace(column, coefficient);
            if (isProduct(column)) {
                expansions_.push_back(column);
            }
        }
    }
    std::vector<LinearForm::Term> sorted;
    sorted.reserve(terms.size());
    for (const auto& [column, coefficient] : terms) {
        sorted.push_back({column, coefficient});
    }
    return {std::move(sorted), polynomial.constant()};
}

/// Defines, replaces or removes a row.
void Solver::setRow(Column column, std::optional<LinearForm> row, Reason reason) {
    std::optional<LinearForm> before = tableau_.set(column, std::move(row));
    if (isSlack(column)) {
        noteInequality(column);
    }
    trail_.push_back(
        {Change::Kind::Row, column, std::move(before), states_[column].reason, std::nullopt});
    states_[column].reason = reason;
}

/// Replaces a free column by a form in a row.
void Solver::substitute(Column basic, Column column, const LinearForm& form, Reason reason) {
    ColumnState& state = states_[basic];
    trail_.push_back({Change::Kind::Row, basic, tableau_.row(basic), state.reason, std::nullopt});
    state.reason = reasons_.derived(state.reason, reason);
    tableau_.substitute(basic, column, form);
    if (isSlack(basic)) {
        LinearForm row = tableau_.row(basic);
        tighten(row, state.isStrict);
        tableau_.set(basic, std::move(row));
        noteInequality(basic);
    }
}

/// Has a new, changed or removed inequality checked.
void Solver::noteInequality(Column slack) {
    const bool isPresent = tableau_.isBasic(slack);
    const bool wasGeneral =
        std::exchange(states_[slack].isGeneral, isPresent && isGeneral(tableau_.row(slack)));
    generalRows_ += (states_[slack].isGeneral ? 1U : 0U) - (wasGeneral ? 1U : 0U);
    if (isPresent) {
        changed_.insert(slack);
        dirty_.insert(slack);
    }
}

void Solver::addInequality(LinearForm form, bool isStrict, Reason reason) {
    Equation equation = reduced({std::move(form), reason});
    tighten(equation.form, isStrict);
    const Column slack = addColumn({});
    states_[slack].isStrict = isStrict;
    setRow(slack, std::move(equation.form), equation.reason);
}

std::optional<Number> Solver::value(const Polynomial& polynomial) {
    const Mark before = mark();
    LinearForm form = linear(polynomial);
    propagate();
    const Equation equation = reduced({std::move(form), domainReason_});
    undo(before);
    return equation.form.isConstant() ? std::optional(equation.form.constant()) : std::nullopt;
}

} // namespace tvtool::solver
