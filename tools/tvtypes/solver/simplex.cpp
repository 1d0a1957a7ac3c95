#include "solver/simplex.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tvtool::solver {

Column Simplex::addColumn(const Value& value) {
    values_.push_back(value);
    bounds_.emplace_back();
    return tableau_.addColumn();
}

Column Simplex::addRow(LinearForm form) {
    const std::vector<LinearForm::Term> terms = form.terms();
    for (const LinearForm::Term& term : terms) {
        if (tableau_.isBasic(term.column)) {
            form.substitute(term.column, tableau_.row(term.column));
        }
    }
    Value value;
    for (const LinearForm::Term& term : form.terms()) {
        value += values_[term.column] * term.coefficient;
    }
    const Column column = addColumn(value);
    tableau_.set(column, std::move(form));
    return column;
}

void Simplex::boundBelow(Column column, const Value& bound, Reason reason) {
    Bounds& bounds = bounds_[column];
    if (bounds.lower && !(bounds.lower->value < bound)) {
        return;
    }
    bounds.lower = {bound, reason};
    if (bounds.upper && bounds.upper->value < bound) {
        clash_ = {reason, bounds.upper->reason};
    } else if (!tableau_.isBasic(column) && isBelow(column)) {
        move(column, bound);
    }
}

void Simplex::boundAbove(Column column, const Value& bound, Reason reason) {
    Bounds& bounds = bounds_[column];
    if (bounds.upper && !(bound < bounds.upper->value)) {
        return;
    }
    bounds.upper = {bound, reason};
    if (bounds.lower && bound < bounds.lower->value) {
        clash_ = {reason, bounds.lower->reason};
    } else if (!tableau_.isBasic(column) && isAbove(column)) {
        move(column, bound);
    }
}

bool Simplex::isBelow(Column column) const {
    const auto& lower = bounds_[column].lower;
    return lower && values_[column] < lower->value;
}

bool Simplex::isAbove(Column column) const {
    const auto& upper = bounds_[column].upper;
    return upper && upper->value < values_[column];
}

/// Gives a free column another value.
void Simplex::move(Column column, const Value& value) {
    const Value change = value - values_[column];
    for (const Column basic : tableau_.uses(column)) {
        values_[basic] += change * tableau_.row(basic).find(column)->coefficient;
    }
    values_[column] = value;
}

/// Exchanges a basic and a free column. Returns false if the work is exhausted; the tableau is not
/// valid any more then.
bool Simplex::pivot(Column basic, Column free) {
    LinearForm form = *tableau_.set(basic, std::nullopt);
    // basic = form, so that form - basic is 0.
    form.add(LinearForm({{basic, -1}}, 0), 1);
    const LinearForm solved = form.solvedFor(free);
    const std::uint64_t weight = solved.weight();
    const std::vector<Column> users(tableau_.uses(free).begin(), tableau_.uses(free).end());
    for (const Column user : users) {
        if (!work_.charge(tableau_.row(user).weight() + weight)) {
            return false;
        }
        tableau_.substitute(user, free, solved);
    }
    tableau_.set(free, solved);
    return true;
}

/// Returns the first column of a row that can move the basic one in a direction.
std::optional<Column> Simplex::findEntering(Column basic, bool mustGrow) const {
    for (const LinearForm::Term& term : tableau_.row(basic).terms()) {
        const Bounds& bounds = bounds_[term.column];
        const Value& value = values_[term.column];
        const bool growsToo = (term.coefficient > 0) == mustGrow;
        if (growsToo ? !bounds.upper || value < bounds.upper->value
                     : !bounds.lower || bounds.lower->value < value) {
            return term.column;
        }
    }
    return std::nullopt;
}

std::vector<Reason> Simplex::conflict(Column basic, bool mustGrow) const {
    const Bounds& own = bounds_[basic];
    std::vector<Reason> reasons{mustGrow ? own.lower->reason : own.upper->reason};
    for (const LinearForm::Term& term : tableau_.row(basic).terms()) {
        const Bounds& bounds = bounds_[term.column];
        reasons.push_back((term.coefficient > 0) == mustGrow ? bounds.upper->reason
                                                             : bounds.lower->reason);
    }
    return reasons;
}

std::optional<std::vector<Reason>> Simplex::solve() {
    if (clash_) {
        return clash_;
    }
    // Bland's rule: always the first column, so that the search ends.
    Column column = 0;
    while (column < tableau_.size()) {
        const bool mustGrow = isBelow(column);
        if (!tableau_.isBasic(column) || (!mustGrow && !isAbove(column))) {
            ++column;
            continue;
        }
        const std::optional<Column> entering = findEntering(column, mustGrow);
        if (!entering) {
            return conflict(column, mustGrow);
        }
        if (!work_.charge(tableau_.size())) {
            return std::nullopt;
        }
        const Bounds& bounds = bounds_[column];
        const Value target = mustGrow ? bounds.lower->value : bounds.upper->value;
        const Number coefficient = tableau_.row(column).find(*entering)->coefficient;
        move(*entering, values_[*entering] + (target - values_[column]) * (1 / coefficient));
        if (!pivot(column, *entering)) {
            return std::nullopt;
        }
        column = 0;
    }
    return std::nullopt;
}

std::optional<std::vector<Reason>> Simplex::solveWhole(const std::vector<Column>& columns,
                                                       bool& isUndecided) {
    struct Branch {
        Column column;
        Integer below; ///< the other branch begins above this number
        std::vector<Bounds> bounds;
        bool isSecond;
    };
    constexpr int mostNodes = 400;
    std::vector<Branch> path;
    std::vector<Reason> reasons;
    for (int nodes = 0; nodes < mostNodes && !work_.isExhausted(); ++nodes) {
        std::optional<std::vector<Reason>> conflict = solve();
        if (work_.isExhausted()) {
            break;
        }
        if (!conflict) {
            const auto fractional = std::ranges::find_if(
                columns, [this](Column column) { return denominator(values_[column].real) != 1; });
            if (fractional == columns.end()) {
                // The values stay, without the bounds of the branches.
                bounds_ = path.empty() ? bounds_ : path.front().bounds;
                return std::nullopt;
            }
            const Integer below = floorOf(values_[*fractional].real);
            path.push_back({*fractional, below, bounds_, false});
            boundAbove(*fractional, {Number(below), 0}, branch);
            continue;
        }
        std::ranges::copy_if(*conflict, std::back_inserter(reasons),
                             [](Reason reason) { return reason != branch; });
        // A conflict without the bounds of branches excludes all of them.
        const bool isOfBranch = std::ranges::find(*conflict, branch) != conflict->end();
        while (!path.empty() && (path.back().isSecond || !isOfBranch)) {
            path.pop_back();
        }
        if (path.empty()) {
            return isOfBranch ? reasons : *conflict;
        }
        clash_.reset();
        bounds_ = path.back().bounds;
        path.back().isSecond = true;
        boundBelow(path.back().column, {Number(path.back().below + 1), 0}, branch);
    }
    isUndecided = true;
    return std::nullopt;
}

} // namespace tvtool::solver
