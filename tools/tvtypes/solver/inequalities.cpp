// Inequalities: bounds, differences, and the point that satisfies all of them.
#include "solver/simplex.h"
#include "solver/solver.h"

#include <algorithm>
#include <utility>

namespace tvtool::solver {

bool Solver::isNotNegative(Column column) const {
    const Monomial& monomial = states_[column].monomial;
    if (domain_ != Domain::Any) {
        return !monomial.empty() && monomial.back() < firstAuxiliary;
    }
    // A product of squares.
    for (std::size_t i = 0; i < monomial.size(); i += 2) {
        if (i + 1 == monomial.size() || monomial[i] != monomial[i + 1]) {
            return false;
        }
    }
    return !monomial.empty();
}

/// Returns whether an inequality is neither a bound of one column or of a difference, nor a
/// consequence of the signs of its terms.
bool Solver::isGeneral(const LinearForm& form) const {
    const auto& terms = form.terms();
    if (terms.size() < 2 || (terms.size() == 2 && terms[0].coefficient == -terms[1].coefficient)) {
        return false;
    }
    return form.constant() <= 0 || std::ranges::any_of(terms, [this](const auto& term) {
               return term.coefficient < 0 || !isNotNegative(term.column);
           });
}

/// Replaces an inequality of whole numbers by the strongest one with the same solutions.
void Solver::tighten(LinearForm& form, bool& isStrict) const {
    form.makePrimitive();
    if (domain_ == Domain::Whole && !form.isConstant()) {
        const Number& constant = form.constant();
        const Integer whole = isStrict ? Integer(-floorOf(-constant) - 1) : floorOf(constant);
        form.addConstant(whole - constant);
        isStrict = false;
    }
}

/// Checks a new or changed inequality. Returns false on a contradiction.
bool Solver::checkInequality(Column slack) {
    if (!tableau_.isBasic(slack)) {
        return true;
    }
    const LinearForm form = tableau_.row(slack);
    const ColumnState& state = states_[slack];
    if (form.isConstant()) {
        return form.constant() > 0 || (form.constant() == 0 && !state.isStrict) ||
               fail(state.reason);
    }
    const Reason reason = state.reason;
    return checkDifference(form, state.isStrict, reason) &&
           (form.terms().size() > 1 || checkRange(form.terms().front().column));
}

/// Adds form >= 0, or form > 0, to the differences if it is one.
bool Solver::checkDifference(const LinearForm& form, bool isStrict, Reason reason) {
    const auto& terms = form.terms();
    const bool isDifference =
        terms.size() == 1 || (terms.size() == 2 && terms[0].coefficient == -terms[1].coefficient);
    if (!isDifference) {
        return true;
    }
    const Number scale = abs(terms[0].coefficient);
    const Differences::Node first = Differences::nodeOf(terms[0].column);
    const Differences::Node second =
        terms.size() == 1 ? Differences::zero : Differences::nodeOf(terms[1].column);
    const bool isFirstGreater = terms[0].coefficient > 0;
    const auto cycle =
        differences_.add(isFirstGreater ? first : second, isFirstGreater ? second : first,
                         {-form.constant() / scale, isStrict ? 1 : 0}, reason);
    return !cycle || fail(reasons_.derived(*cycle));
}

/// Derives an equation or bounds of products from the bounds of a column.
bool Solver::checkRange(Column column) {
    const Range bounds = range(column);
    if (bounds.lower && bounds.upper && bounds.lower->value == bounds.upper->value &&
        !bounds.lower->isStrict && !bounds.upper->isStrict && !tableau_.isBasic(column)) {
        equations_.push_back({LinearForm({{column, 1}}, -bounds.lower->value),
                              reasons_.derived(bounds.lower->reason, bounds.upper->reason)});
        return true;
    }
    const Monomial& monomial = states_[column].monomial;
    const auto products =
        monomial.size() == 1 ? productsOf_.find(monomial.front()) : productsOf_.end();
    if (products != productsOf_.end()) {
        const std::vector<Column> related = products->second;
        for (const Column product : related) {
            boundProduct(product);
            if (tableau_.isBasic(product) && !checkProduct(product)) {
                return false;
            }
        }
    }
    return true;
}

/// Returns the bounds of a free column that inequalities of this column alone state.
Solver::Range Solver::range(Column column) const {
    constexpr std::size_t mostUses = 200;
    Range bounds;
    if (isNotNegative(column)) {
        bounds.lower = Bound{0, false, domainReason_};
    }
    if (tableau_.uses(column).size() > mostUses) {
        return bounds;
    }
    for (const Column user : tableau_.uses(column)) {
        const LinearForm& form = tableau_.row(user);
        if (!isSlack(user) || form.terms().size() > 1) {
            continue;
        }
        const Number& coefficient = form.terms().front().coefficient;
        const Number value = -form.constant() / coefficient;
        const Bound bound{value, states_[user].isStrict, states_[user].reason};
        // Of equal bounds the strict one is the tighter.
        const auto isTighter = [&bound](const std::optional<Bound>& other, bool isGreater) {
            return !other ||
                   (isGreater ? other->value < bound.value : bound.value < other->value) ||
                   (other->value == bound.value && bound.isStrict);
        };
        if (coefficient > 0 && isTighter(bounds.lower, true)) {
            bounds.lower = bound;
        } else if (coefficient < 0 && isTighter(bounds.upper, false)) {
            bounds.upper = bound;
        }
    }
    return bounds;
}

/// Returns the value of a free column, which is at first that of the differences.
const Value& Solver::point(Column column) {
    if (!states_[column].point) {
        movePoint(column, differences_.value(Differences::nodeOf(column)));
    }
    return *states_[column].point;
}

void Solver::movePoint(Column column, const Value& value) {
    trail_.push_back({Change::Kind::Point, column, std::nullopt, 0, states_[column].point});
    states_[column].point = value;
}

Value Solver::valueAt(const LinearForm& form) {
    Value value{form.constant(), 0};
    for (const LinearForm::Term& term : form.terms()) {
        value += point(term.column) * term.coefficient;
    }
    return value;
}

bool Solver::isSatisfied(Column slack) {
    return !(valueAt(tableau_.row(slack)) < Value{0, states_[slack].isStrict ? 1 : 0});
}

/// Moves the point until it satisfies all inequalities, by a simplex of those that it does not
/// satisfy at first, or not any more after a move. Differences alone need no point. Returns false
/// on a contradiction.
bool Solver::repairPoint() {
    if (generalRows_ == 0) {
        return true;
    }
    Simplex simplex(work_);
    std::map<Column, Column> local; ///< column of the simplex, by free column
    std::set<Column> included;      ///< slack columns
    std::vector<Column> wholes;
    std::vector<Column> pending;
    const auto include = [&](Column slack) {
        if (!included.insert(slack).second) {
            return;
        }
        std::vector<LinearForm::Term> terms;
        for (const LinearForm::Term& term : tableau_.row(slack).terms()) {
            const auto [known, isNew] = local.try_emplace(term.column, 0);
            if (isNew) {
                known->second = simplex.addColumn(point(term.column));
                wholes.push_back(known->second);
                pending.push_back(term.column);
            }
            terms.push_back({known->second, term.coefficient});
        }
        std::ranges::sort(terms, {}, &LinearForm::Term::column);
        const Value bound{-tableau_.row(slack).constant(), states_[slack].isStrict ? 1 : 0};
        const Reason reason = states_[slack].reason;
        if (terms.size() > 1) {
            simplex.boundBelow(simplex.addRow({std::move(terms), 0}), bound, reason);
        } else if (const Number coefficient = terms.front().coefficient; coefficient > 0) {
            simplex.boundBelow(terms.front().column, bound * (1 / coefficient), reason);
        } else {
            simplex.boundAbove(terms.front().column, bound * (1 / coefficient), reason);
        }
    };
    while (true) {
        bool isChanged = false;
        const std::set<Column> dirty = std::exchange(dirty_, {});
        for (const Column slack : dirty) {
            trail_.push_back({Change::Kind::Clean, slack, std::nullopt, 0, std::nullopt});
            if (!work_.charge(tableau_.row(slack).terms().size())) {
                return true;
            }
            if (!isSatisfied(slack)) {
                include(slack);
                isChanged = true;
            }
        }
        if (!isChanged) {
            return true;
        }
        // The bounds of the columns themselves.
        while (!pending.empty()) {
            const Column column = pending.back();
            pending.pop_back();
            if (isNotNegative(column)) {
                simplex.boundBelow(local.at(column), {}, domainReason_);
            }
            for (const Column user : tableau_.uses(column)) {
                if (isSlack(user) && tableau_.row(user).terms().size() == 1) {
                    include(user);
                }
            }
        }
        const auto conflict =
            domain_ == Domain::Whole ? simplex.solveWhole(wholes, isUndecided_) : simplex.solve();
        if (conflict) {
            std::vector<Reason> reasons = *conflict;
            if (domain_ == Domain::Whole) {
                reasons.push_back(domainReason_);
            }
            return fail(reasons_.derived(reasons));
        }
        if (isUndecided_ || work_.isExhausted()) {
            return true;
        }
        for (const auto& [column, simplexColumn] : local) {
            if (point(column) == simplex.value(simplexColumn)) {
                continue;
            }
            movePoint(column, simplex.value(simplexColumn));
            for (const Column user : tableau_.uses(column)) {
                if (isSlack(user) && !included.contains(user)) {
                    dirty_.insert(user);
                }
            }
        }
    }
}

} // namespace tvtool::solver
