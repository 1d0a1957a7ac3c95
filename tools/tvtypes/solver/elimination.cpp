// Equations in solved form, and whole numbers in them.
#include "solver/solver.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tvtool::solver {

/// Substitutes the rows of all basic columns.
Solver::Equation Solver::reduced(Equation equation) {
    const std::vector<LinearForm::Term> terms = equation.form.terms();
    for (const LinearForm::Term& term : terms) {
        if (tableau_.isBasic(term.column)) {
            const LinearForm& row = tableau_.row(term.column);
            if (!work_.charge(equation.form.weight() + row.weight())) {
                return equation;
            }
            equation.form.substitute(term.column, row);
            equation.reason = reasons_.derived(equation.reason, states_[term.column].reason);
        }
    }
    return equation;
}

/// Adds form == 0. Returns false on a contradiction.
bool Solver::addEquation(Equation equation) {
    equation = reduced(std::move(equation));
    if (work_.isExhausted()) {
        return true;
    }
    if (equation.form.isConstant()) {
        return equation.form.constant() == 0 || fail(equation.reason);
    }
    equation.form.makePrimitive();
    if (domain_ == Domain::Whole && denominator(equation.form.constant()) != 1) {
        // A sum of whole multiples is no fraction.
        return fail(reasons_.derived(equation.reason, domainReason_));
    }
    const Column pivot = pivotOf(equation.form);
    const bool isUnit = abs(equation.form.find(pivot)->coefficient) == 1;
    if (domain_ == Domain::Whole && !isUnit && !isProduct(pivot)) {
        return rewrite(equation);
    }
    return solveFor(pivot, equation.form.solvedFor(pivot), equation.reason);
}

/// Returns a column of the highest degree, so that substitution in products does not raise the
/// degree; of these one with the coefficient 1 or -1, then the one in the fewest rows.
Column Solver::pivotOf(const LinearForm& form) const {
    const auto rank = [this](const LinearForm::Term& term) {
        return std::tuple(states_[term.column].monomial.size(), abs(term.coefficient) == 1,
                          -static_cast<std::ptrdiff_t>(tableau_.uses(term.column).size()));
    };
    return std::ranges::max_element(form.terms(), {}, rank)->column;
}

/// Solves a form, all of whose coefficients are above 1, by a column of the least coefficient and
/// an auxiliary one, and queues the rest, whose coefficients are remainders of the division by it.
/// Returns false on a contradiction.
bool Solver::rewrite(const Equation& equation) {
    const auto magnitude = [](const LinearForm::Term& term) { return abs(term.coefficient); };
    const LinearForm::Term least = *std::ranges::min_element(equation.form.terms(), {}, magnitude);
    const Number divisor = abs(least.coefficient);
    const Column auxiliary = columnOf({nextAuxiliary_++});
    std::vector<LinearForm::Term> quotients;
    std::vector<LinearForm::Term> remainders;
    for (const LinearForm::Term& term : equation.form.terms()) {
        const Number quotient = Number(floorOf(term.coefficient / divisor));
        const Number remainder = term.coefficient - quotient * divisor;
        if (term.column != least.column && quotient != 0) {
            quotients.push_back({term.column, -quotient});
        }
        if (remainder != 0) {
            remainders.push_back({term.column, remainder});
        }
    }
    // The auxiliary column is the newest, so the terms stay in order.
    quotients.push_back({auxiliary, 1});
    remainders.push_back({auxiliary, divisor});
    const Number quotient = Number(floorOf(equation.form.constant() / divisor));
    const Number remainder = equation.form.constant() - quotient * divisor;
    LinearForm solved(std::move(quotients), -quotient);
    solved.scale(least.coefficient > 0 ? 1 : -1);
    equations_.push_back({LinearForm(std::move(remainders), remainder), equation.reason});
    return solveFor(least.column, solved, domainReason_);
}

/// Defines a free column by a form and substitutes it. Returns false on a contradiction.
bool Solver::solveFor(Column pivot, const LinearForm& form, Reason reason) {
    const std::uint64_t weight = form.weight();
    const std::vector<Column> users(tableau_.uses(pivot).begin(), tableau_.uses(pivot).end());
    for (const Column user : users) {
        if (!work_.charge(tableau_.row(user).weight() + weight)) {
            return true;
        }
        substitute(user, pivot, form, reason);
        if (!isSlack(user) && !checkEquation(user)) {
            return false;
        }
    }
    setRow(pivot, form, reason);
    if (isNotNegative(pivot)) {
        addInequality(form, false, reasons_.derived(reason, domainReason_));
    }
    queueExpansions(pivot);
    return checkEquation(pivot);
}

/// Checks a new or changed row of an equation. Returns false on a contradiction.
bool Solver::checkEquation(Column basic) {
    const LinearForm& row = tableau_.row(basic);
    const Reason reason = states_[basic].reason;
    if (domain_ == Domain::Whole) {
        Integer multiple = 1;
        for (const LinearForm::Term& term : row.terms()) {
            multiple = lcm(multiple, denominator(term.coefficient));
        }
        if (denominator(Number(row.constant() * multiple)) != 1) {
            return fail(reasons_.derived(reason, domainReason_));
        }
    }
    // The difference of two columns, or of a column and a number.
    if (row.terms().size() <= 1) {
        LinearForm form = row;
        form.scale(-1);
        form.add(LinearForm({{basic, 1}}, 0), 1);
        LinearForm negated = form;
        negated.scale(-1);
        if (!checkDifference(form, false, reason) || !checkDifference(negated, false, reason)) {
            return false;
        }
    }
    return checkProduct(basic);
}

} // namespace tvtool::solver
